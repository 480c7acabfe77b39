#include "desktop/client/chore.h"

#include <glib.h>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/system/files.h"

namespace tessary::client {

using system::ChildFault;

/// Its thread and, once that is through, the main loop hold on to it.
struct Chore::Run {
    Chore* owner{};  ///< the main loop's; null once it has lost interest
    system::Descriptor stop{::eventfd(0, EFD_CLOEXEC)};
    std::thread thread{};
    Next next{};

    void join() {
        if (thread.joinable()) thread.join();
    }
    static gboolean come(gpointer data) {
        const auto run = *static_cast<std::shared_ptr<Run>*>(data);
        run->join();
        if (!run->owner) return G_SOURCE_REMOVE;
        run->owner->run_.reset();
        run->next();
        return G_SOURCE_REMOVE;
    }
    static void free(gpointer data) { delete static_cast<std::shared_ptr<Run>*>(data); }
    static void tell(const std::shared_ptr<Run>& run, Next next) {
        run->next = std::move(next);
        g_idle_add_full(G_PRIORITY_DEFAULT, &Run::come, new std::shared_ptr<Run>{run}, &Run::free);
    }
};

void Chore::start(system::Errand errand, const std::function<Next(const Outcome&)>& understand) {
    cancel();
    run_ = std::make_shared<Run>();
    run_->owner = this;
    errand.stop = run_->stop.number();
    try {
        run_->thread = std::thread{[run = run_, errand = std::move(errand), understand] {
            Run::tell(run, understand(system::runChild(errand)));
        }};
    } catch (const std::system_error& problem) {
        Run::tell(run_, understand(ChildFault{ChildFault::Kind::notStarted, problem.what()}));
    }
}

void Chore::cancel() {
    const auto run = std::exchange(run_, nullptr);
    if (!run) return;
    run->owner = nullptr;
    ::eventfd_write(run->stop.number(), 1);
    run->join();
}

}  // namespace tessary::client
