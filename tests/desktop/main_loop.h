// GLib's main loop in the hands of a test.
#pragma once

#include <chrono>
#include <glib.h>

namespace tessary {

/// Runs the loop until something holds; false where it does not in ten seconds.
template <class Holds>
bool until(Holds holds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    const auto tick = g_timeout_add(
        5, [](gpointer) -> gboolean { return TRUE; }, nullptr);
    while (!holds() && std::chrono::steady_clock::now() < end)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(tick);
    return holds();
}

/// Runs the loop for a while.
inline void runFor(std::chrono::milliseconds while_) {
    const auto end = std::chrono::steady_clock::now() + while_;
    until([&] { return std::chrono::steady_clock::now() >= end; });
}

}  // namespace tessary
