// Answers a host's requests for the alarms widget.
#pragma once

#include <functional>

#include "alarms/alarms_display.h"
#include "platform/widgets/provider_context.h"
#include "platform/widgets/timeline.h"

namespace tessary::alarms {

struct AlarmsEntry {
    Date date{};  ///< when it is to be shown, and the moment that its view takes for now
    AlarmsDisplay display;
    bool operator==(const AlarmsEntry&) const = default;
};

/// Keeps nothing between requests: each reads the file and the clock afresh, on the caller's
/// thread, and calls its completion once before it returns. No request fails.
struct AlarmsProvider {
    using Context = widgets::ProviderContext;

    /// The sample, now; reads no file.
    AlarmsEntry placeholder(const Context& context) const;

    /// The file's state now; the sample instead for a preview without a file.
    void getSnapshot(const Context& context,
                     const std::function<void(AlarmsEntry)>& completion) const;

    /// Five entries, a minute apart, of one reading of the file, each judged at its own date; to be
    /// asked again a minute after the last.
    void getTimeline(const Context& context,
                     const std::function<void(widgets::Timeline<AlarmsEntry>)>& completion) const;
};

/// The sample, built on first use and then the same for the life of the process.
struct AlarmsPreviewData {
    static Date now();
    static const AlarmsDisplay& firing();
};

}  // namespace tessary::alarms
