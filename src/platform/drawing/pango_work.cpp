#include "platform/drawing/pango_work.h"

#include <deque>
#include <glib.h>
#include <utility>

namespace {

struct Work {
    GThreadFunc function{};
    gpointer data{};
};

/// Each looks fonts up in a map, and a map belongs to the thread that made it.
std::deque<Work>& pending() {
    thread_local std::deque<Work> work;
    return work;
}

}  // namespace

void tessary::drawing::finishPangosWork() {
    while (!pending().empty()) {
        const Work next = pending().front();
        pending().pop_front();
        next.function(next.data);
    }
}

// In GLib's place for whoever calls these from another library: only Pango does.
extern "C" GThread* g_thread_new(const gchar*, GThreadFunc function, gpointer data) {
    pending().push_back({function, data});  // and not at once: a lock may be held that it takes
    return g_thread_ref(g_thread_self());
}

extern "C" void g_cond_wait(GCond*, GMutex* held) {
    g_mutex_unlock(held);
    tessary::drawing::finishPangosWork();
    g_mutex_lock(held);
}
