#include "desktop/session_lock.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "desktop/glib_handles.h"
#include "desktop/main_loop.h"

namespace tessary::desktop {
namespace {

constexpr const char* ours = "/org/freedesktop/login1/session/_37";

// Stands in for logind on a bus of the test's own.
class Logind {
public:
    explicit Logind(const char* address)
        : bus_{g_dbus_connection_new_for_address_sync(
              address,
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr)} {
        g_dbus_connection_add_filter(bus_.get(), answered, &asked_, nullptr);
        g_bus_own_name_on_connection(bus_.get(), "org.freedesktop.login1",
                                     G_BUS_NAME_OWNER_FLAGS_NONE, named, nullptr, &named_, nullptr);
    }
    bool ready() const { return named_; }
    int asked() const { return asked_; }
    void emit(const char* path, const char* signal) {
        g_dbus_connection_emit_signal(bus_.get(), nullptr, path, "org.freedesktop.login1.Session",
                                      signal, nullptr, nullptr);
    }

private:
    static void named(GDBusConnection*, const char*, gpointer to) {
        *static_cast<bool*>(to) = true;
    }
    /// Answers GetSession("37"), in the connection's own thread.
    static GDBusMessage* answered(GDBusConnection* bus, GDBusMessage* message, gboolean incoming,
                                  gpointer count) {
        if (!incoming || g_strcmp0(g_dbus_message_get_member(message), "GetSession") != 0)
            return message;
        const Object<GDBusMessage> reply{g_dbus_message_new_method_reply(message)};
        g_dbus_message_set_body(reply.get(), g_variant_new("(o)", ours));
        g_dbus_connection_send_message(bus, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
        g_object_unref(message);
        g_atomic_int_inc(static_cast<int*>(count));
        return nullptr;
    }

    Object<GDBusConnection> bus_;
    bool named_{};
    int asked_{};
};

TEST(SessionLock, HearsOfItsOwnSessionAlone) {
    const Object<GTestDBus> daemon{g_test_dbus_new(G_TEST_DBUS_NONE)};
    g_test_dbus_up(daemon.get());
    const char* address = g_test_dbus_get_bus_address(daemon.get());
    g_setenv("DBUS_SYSTEM_BUS_ADDRESS", address, TRUE);
    g_setenv("XDG_SESSION_ID", "37", TRUE);
    {
        Logind logind{address};
        ASSERT_TRUE(until([&] { return logind.ready(); }));
        std::string told;
        const SessionLock lock{[&](bool locked) { told += locked ? 'L' : 'U'; }};
        ASSERT_TRUE(until([&] { return logind.asked() == 1; }));
        ASSERT_TRUE(until([&] { return logind.emit(ours, "Lock"), !told.empty(); }));
        runFor(std::chrono::milliseconds{50});
        told.clear();
        logind.emit("/org/freedesktop/login1/session/_38", "Lock");
        logind.emit(ours, "PauseDevice");
        logind.emit(ours, "Unlock");
        logind.emit(ours, "Lock");
        EXPECT_TRUE(until([&] { return told.size() >= 2; }));
        EXPECT_EQ(told, "UL");
    }
    g_test_dbus_stop(daemon.get());
}

}  // namespace
}  // namespace tessary::desktop
