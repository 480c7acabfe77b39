#include "desktop/signs/session_lock.h"

#include <atomic>
#include <gio/gio.h>
#include <gtest/gtest.h>

#include "desktop/glib/handles.h"
#include "desktop/main_loop.h"
#include "support/table.h"

namespace tessary::signs {

using namespace glib;
namespace {

constexpr const char* ours = "/org/freedesktop/login1/session/_37";
constexpr const char* others = "/org/freedesktop/login1/session/_38";

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
    /// Tells that a property of the session has changed.
    void tell(const char* path, const char* name, bool value) {
        GVariantBuilder values;
        g_variant_builder_init(&values, G_VARIANT_TYPE("a{sv}"));
        g_variant_builder_add(&values, "{sv}", name, g_variant_new_boolean(value));
        g_dbus_connection_emit_signal(
            bus_.get(), nullptr, path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
            g_variant_new("(sa{sv}as)", "org.freedesktop.login1.Session", &values, nullptr),
            nullptr);
    }
    static inline std::atomic<bool> locked{};  ///< what the session's hint is asked for

private:
    static void named(GDBusConnection*, const char*, gpointer to) {
        *static_cast<bool*>(to) = true;
    }
    /// Answers GetSession("37") and the hint, in the connection's own thread.
    static GDBusMessage* answered(GDBusConnection* bus, GDBusMessage* message, gboolean incoming,
                                  gpointer count) {
        const char* name = incoming ? g_dbus_message_get_member(message) : nullptr;
        const std::string_view member{name ? name : ""};
        if (member != "GetSession" && member != "Get") return message;
        const Object<GDBusMessage> reply{g_dbus_message_new_method_reply(message)};
        g_dbus_message_set_body(
            reply.get(), member == "Get" ? g_variant_new("(v)", g_variant_new_boolean(locked))
                                         : g_variant_new("(o)", ours));
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

// What the hint is at the start; then what logind tells: a signal of the session, or `=` and what
// its hint is now; then what the listener tells, by L and U. Another's session is none of it.
TEST(SessionLock, TellsWhatChangesOfItsOwnSession) {
    const Object<GTestDBus> daemon{g_test_dbus_new(G_TEST_DBUS_NONE)};
    g_test_dbus_up(daemon.get());
    const char* address = g_test_dbus_get_bus_address(daemon.get());
    g_setenv("DBUS_SYSTEM_BUS_ADDRESS", address, TRUE);
    g_setenv("XDG_SESSION_ID", "37", TRUE);
    {
        Logind logind{address};
        ASSERT_TRUE(until([&] { return logind.ready(); }));
        for (const auto& row : table(R"(
        no  | Lock PauseDevice Unlock Lock        | LUL
        no  | Lock Lock =1 Unlock =0 =1 =0        | LULU
        yes |                                     | L
        yes | Lock =1 =0 Unlock Lock              | LUL
    )")) {
            const int before = logind.asked();
            Logind::locked = row[0] == "yes";
            std::string told;
            const SessionLock lock{[&](bool locked) { told += locked ? 'L' : 'U'; }};
            ASSERT_TRUE(
                until([&] { return logind.asked() == before + 2; }));  // and listened to by now
            ASSERT_TRUE(until([&] { return !Logind::locked || !told.empty(); }));
            logind.emit(others, "Lock");
            logind.tell(others, "LockedHint", !Logind::locked);
            logind.tell(ours, "IdleHint", !Logind::locked);
            std::istringstream words{row[1]};
            for (std::string word; words >> word;)
                word[0] == '=' ? logind.tell(ours, "LockedHint", word[1] == '1')
                               : logind.emit(ours, word.c_str());
            EXPECT_TRUE(until([&] { return told.size() >= row[2].size(); }))
                << row[1] << ": " << told;
            runFor(std::chrono::milliseconds{50});
            EXPECT_EQ(told, row[2]) << row[1];
        }
    }
    g_test_dbus_stop(daemon.get());
}

}  // namespace
}  // namespace tessary::signs
