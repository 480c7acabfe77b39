#include "desktop/signs/path_watch.h"

#include <glib-unix.h>
#include <stdexcept>
#include <utility>

namespace tessary::signs {

namespace {

constexpr std::chrono::milliseconds burst{15};

}  // namespace

PathWatch::PathWatch(std::vector<std::filesystem::path> paths, Events events)
    : watch_{std::move(paths), system::PathWatch::Reach::lastThree}, events_{std::move(events)} {
    if (watch_.descriptor() < 0) throw std::runtime_error{watch_.sight().fault().message()};
    const auto call = [](int, GIOCondition, gpointer self) -> gboolean {
        static_cast<PathWatch*>(self)->takeEvents();
        return G_SOURCE_CONTINUE;
    };
    source_ = g_unix_fd_add(watch_.descriptor(), G_IO_IN, call, this);
}

PathWatch::~PathWatch() { g_source_remove(source_); }

void PathWatch::takeEvents() {
    if (!watch_.takeEvents() || burst_.running()) return;
    burst_.start(burst, [this] {
        watch_.follow();
        events_.changed();
    });
    if (events_.stirring) events_.stirring();
}

}  // namespace tessary::signs
