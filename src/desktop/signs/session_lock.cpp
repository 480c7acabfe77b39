#include "desktop/signs/session_lock.h"

#include <string_view>
#include <utility>
#include <vector>

#include "desktop/glib/connect.h"
#include "desktop/glib/handles.h"

namespace tessary::signs {

using namespace glib;

namespace {

constexpr const char* logind = "org.freedesktop.login1";
constexpr const char* session = "org.freedesktop.login1.Session";
constexpr const char* properties = "org.freedesktop.DBus.Properties";

struct UnrefVariant {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, UnrefVariant>;

}  // namespace

/// Finds the session's object and listens to it. Calls under way hold on to it, so it may outlive
/// its owner.
struct SessionLock::Listener : std::enable_shared_from_this<Listener> {
    explicit Listener(std::function<void(bool)> call) : changed{std::move(call)} {}

    void start() {
        const auto [done, data] = once([self = shared_from_this()](GObject*, GAsyncResult* result) {
            self->bus.reset(g_bus_get_finish(result, nullptr));
            if (self->bus && self->changed) self->findSession();
        });
        g_bus_get(G_BUS_TYPE_SYSTEM, nullptr, done, data);
    }

    /// The session that this process runs in; for a service of the user, which runs in none, the
    /// one that has the user's display.
    void findSession() {
        const char* id = g_getenv("XDG_SESSION_ID");
        if (id && *id)
            call<&Listener::found>("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                   "GetSession", g_variant_new("(s)", id), "(o)");
        else
            call<&Listener::found>("/org/freedesktop/login1/user/self", properties, "Get",
                                   g_variant_new("(ss)", "org.freedesktop.login1.User", "Display"),
                                   "(v)");
    }

    /// The reply, null where there is none, goes to a member.
    template <void (Listener::*take)(const Variant&)>
    void call(const char* path, const char* interface, const char* method, GVariant* words,
              const char* type) {
        const auto [done, data] = once([self = shared_from_this()](GObject*, GAsyncResult* result) {
            (self.get()->*take)(
                Variant{g_dbus_connection_call_finish(self->bus.get(), result, nullptr)});
        });
        g_dbus_connection_call(bus.get(), logind, path, interface, method, words,
                               G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
                               done, data);
    }

    void found(const Variant& reply) {
        if (!reply || !changed) return;
        const Variant first{g_variant_get_child_value(reply.get(), 0)};
        if (g_variant_is_of_type(first.get(), G_VARIANT_TYPE_OBJECT_PATH))
            return listen(g_variant_get_string(first.get(), nullptr));
        const Variant display{g_variant_get_variant(first.get())};
        if (!g_variant_is_of_type(display.get(), G_VARIANT_TYPE("(so)"))) return;
        const Variant path{g_variant_get_child_value(display.get(), 1)};
        listen(g_variant_get_string(path.get(), nullptr));
    }

    /// The signals ask for a lock, the hint says that there is one; a locker may heed only one.
    void listen(const char* path) {
        const auto asked = [](GDBusConnection*, const char*, const char*, const char*,
                              const char* name, GVariant*, gpointer self) {
            const std::string_view signal{name};
            if (signal == "Lock" || signal == "Unlock")
                static_cast<Listener*>(self)->tell(signal == "Lock");
        };
        const auto hinted = [](GDBusConnection*, const char*, const char*, const char*, const char*,
                               GVariant* words, gpointer self) {
            if (!g_variant_is_of_type(words, G_VARIANT_TYPE("(sa{sv}as)"))) return;
            const Variant values{g_variant_get_child_value(words, 1)};
            gboolean hint{};
            if (g_variant_lookup(values.get(), "LockedHint", "b", &hint))
                static_cast<Listener*>(self)->tell(hint != FALSE);
        };
        const auto subscribe = [&](const char* interface, const char* name, const char* first,
                                   GDBusSignalCallback told) {
            return g_dbus_connection_signal_subscribe(bus.get(), logind, interface, name, path,
                                                      first, G_DBUS_SIGNAL_FLAGS_NONE, told, this,
                                                      nullptr);
        };
        subscriptions = {subscribe(session, nullptr, nullptr, asked),
                         subscribe(properties, "PropertiesChanged", session, hinted)};
        call<&Listener::foundLocked>(path, properties, "Get",
                                     g_variant_new("(ss)", session, "LockedHint"), "(v)");
    }

    /// Without the hint the session counts as it did, as the lock that a signal asked for may be on
    /// its way.
    void foundLocked(const Variant& reply) {
        if (!reply) return;
        Variant value{g_variant_get_child_value(reply.get(), 0)};
        value.reset(g_variant_get_variant(value.get()));
        if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) &&
            g_variant_get_boolean(value.get()))
            tell(true);
    }

    void tell(bool isLocked) {
        if (changed && std::exchange(locked, isLocked) != isLocked) changed(isLocked);
    }

    void stop() {
        changed = nullptr;
        for (const unsigned subscription : std::exchange(subscriptions, {}))
            g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
    }

    std::function<void(bool)> changed;  ///< null once it has been stopped
    Object<GDBusConnection> bus{};
    std::vector<unsigned> subscriptions{};
    bool locked{};
};

SessionLock::SessionLock(std::function<void(bool)> changed)
    : listener_{std::make_shared<Listener>(std::move(changed))} {
    listener_->start();
}

SessionLock::~SessionLock() { listener_->stop(); }

}  // namespace tessary::signs
