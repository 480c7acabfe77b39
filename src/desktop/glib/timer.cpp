#include "desktop/glib/timer.h"

#include <glib.h>
#include <utility>

namespace tessary::glib {

void Timer::start(std::chrono::milliseconds after, std::function<void()> due) {
    cancel();
    due_ = std::move(due);
    const auto call = [](gpointer self) -> gboolean {
        auto& timer = *static_cast<Timer*>(self);
        timer.source_ = 0;
        std::exchange(timer.due_, nullptr)();  // may start the timer anew, or end it
        return G_SOURCE_REMOVE;
    };
    source_ = g_timeout_add(static_cast<guint>(after.count()), call, this);
}

void Timer::cancel() {
    if (source_ != 0) g_source_remove(source_);
    source_ = 0;
    due_ = nullptr;
}

}  // namespace tessary::glib
