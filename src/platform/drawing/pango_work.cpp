#include "platform/drawing/pango_work.h"

#include <csetjmp>
#include <glib.h>
#include <utility>

namespace {

struct Work {
    GThreadFunc function{};
    gpointer data{};
    Work* next{};
};

/// Each looks fonts up in a map, and a map belongs to the thread that made it. No object, which
/// would end before those that a program keeps to its own end.
thread_local Work* first = nullptr;

void add(Work* work) {
    Work** end = &first;
    while (*end != nullptr) end = &(*end)->next;
    work->next = nullptr;
    *end = work;
}

/// Where to go on once the work that is being done has nothing to do for now.
thread_local std::jmp_buf* rest = nullptr;

/// Whether it ended. Pango 1.50 leaves a work for each question; 1.56 one for each map, which waits
/// for questions until the map is gone. It is C, and keeps nothing from one question to the next.
bool isDone(const Work& work) {
    std::jmp_buf here;
    std::jmp_buf* const before = rest;
    rest = &here;
    const bool hasRested = setjmp(here) != 0;
    if (!hasRested) work.function(work.data);
    rest = before;
    return !hasRested;
}

/// Does each once; whether one of them ended.
bool hasFinishedSome() {
    bool some = false;
    Work* next = std::exchange(first, nullptr);
    while (next != nullptr) {
        Work* const work = std::exchange(next, next->next);
        const bool isAtEnd = isDone(*work);
        some = some || isAtEnd;
        isAtEnd ? delete work : add(work);
    }
    return some;
}

}  // namespace

void tessary::drawing::finishPangosWork() {
    while (hasFinishedSome()) continue;
}

// In GLib's place for whoever calls these from another library: only Pango does.
extern "C" GThread* g_thread_new(const gchar*, GThreadFunc function, gpointer data) {
    add(new Work{function, data});  // and not at once: a lock may be held that it takes
    return g_thread_ref(g_thread_self());
}

extern "C" void g_cond_wait(GCond*, GMutex* held) {
    g_mutex_unlock(held);
    tessary::drawing::finishPangosWork();
    g_mutex_lock(held);
}

extern "C" gpointer g_async_queue_pop(GAsyncQueue* questions) {
    if (gpointer next = g_async_queue_try_pop(questions)) return next;
    std::longjmp(*rest, 1);
}
