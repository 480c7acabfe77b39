// Answers a host's requests for the alarms widget.
#pragma once

#include "alarms/alarms_display.h"
#include "platform/widgets/provider_context.h"
#include "platform/widgets/timeline.h"
#include "snapshot/source.h"

namespace tessary::alarms {

struct AlarmsEntry {
    Date date{};  ///< when it is to be shown, and the moment that its view takes for now
    AlarmsDisplay display;
    bool operator==(const AlarmsEntry&) const = default;
};

/// Keeps nothing between requests: each reads the file and the clock afresh, on the caller's
/// thread. No request fails.
struct AlarmsProvider {
    using Entry = AlarmsEntry;
    using Context = widgets::ProviderContext;

    snapshot::Source source{};

    /// The sample, now; reads no file.
    AlarmsEntry placeholder(const Context& context) const;

    /// The file's state now; the sample instead for a preview without a file.
    AlarmsEntry snapshot(const Context& context) const;

    /// Five entries, a minute apart, of one reading of the file, each judged at its own date; to be
    /// asked again a minute after the last.
    widgets::Timeline<AlarmsEntry> timeline(const Context& context) const;

    /// For placeholders, and for previews without a file: built on first use, of that moment, and
    /// then the same for the life of the process.
    const AlarmsDisplay& sample() const;
};

}  // namespace tessary::alarms
