// Functions of ours that GLib calls, with all that they have captured.
//
//     connect(button, "clicked", [this] { choose(); });
//     connect(window, "key-press-event", [this](GdkEventKey* event) { return type(*event); });
//     const Connection composited{screen, "composited-changed", [this] { shape(); }};
//     const auto [call, data] = once([this](GObject*, GAsyncResult* result) { take(result); });
//     g_bus_get(G_BUS_TYPE_SYSTEM, nullptr, call, data);
//
// A signal's function takes of what the signal tells as much as it has a use for, from the first
// after the sender on. It returns what the signal expects, a bool for a gboolean.
#pragma once

#include <gio/gio.h>
#include <memory>
#include <type_traits>
#include <utility>

namespace tessary::glib {

/// How a closure of C calls such a function: the function comes first, as GLib has it for swapped
/// arguments, so that what it does not take is passed over.
template <class Handler, class Result, class... Told>
GCallback callOf(Result (Handler::*)(Told...) const) {
    using Returned = std::conditional_t<std::is_same_v<Result, bool>, gboolean, Result>;
    Returned (*const call)(gpointer, Told...) = [](gpointer handler, Told... told) -> Returned {
        return (*static_cast<const Handler*>(handler))(told...);
    };
    return G_CALLBACK(call);
}

enum class When { first, afterOthers };  ///< before or after what the sender itself does

/// From now on, until the sender goes; then the function goes too.
template <class Handler>
gulong connect(gpointer sender, const char* signal, Handler handler, When when = When::first) {
    const auto free = [](gpointer data, GClosure*) { delete static_cast<Handler*>(data); };
    const unsigned order = when == When::afterOthers ? G_CONNECT_AFTER : 0;
    return g_signal_connect_data(sender, signal, callOf(&Handler::operator()),
                                 new Handler{std::move(handler)}, free,
                                 static_cast<GConnectFlags>(G_CONNECT_SWAPPED | order));
}

/// For as long as this is there; the sender has to be there for longer.
class Connection {
public:
    template <class Handler>
    Connection(gpointer sender, const char* signal, Handler handler)
        : sender_{sender}, id_{connect(sender, signal, std::move(handler))} {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { g_signal_handler_disconnect(sender_, id_); }

private:
    gpointer sender_;
    gulong id_;
};

/// What a call that answers later wants to be given.
struct Later {
    GAsyncReadyCallback call{};
    gpointer data{};
};

/// For one call, which has to answer, even if it is by an error.
template <class Handler>
Later once(Handler handler) {
    const auto call = [](GObject* source, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Handler> owner{static_cast<Handler*>(data)};
        (*owner)(source, result);
    };
    return {call, new Handler{std::move(handler)}};
}

}  // namespace tessary::glib
