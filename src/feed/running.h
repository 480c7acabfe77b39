// A feed at work: rounds, their files, and what is told of them.
//
//     Feed feed{paths, plan, std::move(store), sources};
//     feed.round();                            // once
//     feed.runUntilEnd(EndSignals{});          // every interval, and where the settings change
#pragma once

#include "feed/asker.h"
#include "feed/notes.h"
#include "feed/outside.h"
#include "feed/plan.h"
#include "feed/signals.h"
#include "feed/store/store.h"
#include "platform/system/path_watch.h"

namespace tessary::feed {

/// Makes rounds in its store, as long as it has that for itself.
class Feed {
public:
    Feed(Paths paths, Plan plan, store::Store store, aws::KeySources sources,
         aws::Patience patience = {});

    /// Whether a file was written, and something asked or known to wait for a sign-in.
    bool round();

    void runUntilEnd(const EndSignals& end);

private:
    double interval() const { return static_cast<double>(plan_.settings.interval); }
    void tell(Made& made);
    bool reload();

    Paths paths_;
    Plan plan_;
    store::Store store_;
    aws::KeySources sources_;
    Asker asker_;
    store::Memory memory_;
    Notes notes_{};
    Outside* outside_{};  ///< while it runs
};

}  // namespace tessary::feed
