// Answers a host's requests for a widget of one pin.
#pragma once

#include <utility>

#include "pins/pin_display.h"
#include "platform/widgets/provider_context.h"
#include "platform/widgets/timeline.h"
#include "snapshot/reading.h"

namespace tessary::pins {

template <class Snapshot>
struct PinEntry {
    Date date{};  ///< when it is to be shown, and the moment that its view takes for now
    PinDisplay<Snapshot> display;
    bool operator==(const PinEntry&) const = default;
};

/// Keeps nothing between requests: each reads the file and the clock afresh, on the caller's
/// thread. No request fails.
template <class Kind>
struct PinProvider {
    using Snapshot = typename Kind::Snapshot;
    using Display = PinDisplay<Snapshot>;
    using Entry = PinEntry<Snapshot>;
    using Context = widgets::ProviderContext;

    snapshot::Source source{};

    /// The sample, now; reads no file.
    Entry placeholder(const Context&) const { return {source.clock(), sample()}; }

    /// The chosen pin now; the sample instead for a preview where nothing is pinned.
    Entry snapshot(const Context& context) const {
        const auto file = snapshot::load<Snapshot>(source);
        const bool nothingPinned = !file || file->pins.empty();
        const Date now = source.clock();
        if (context.isPreview && nothingPinned) return {now, sample()};
        return {now, Display::resolve(file, context.choice, now)};
    }

    /// Five entries, a minute apart, of one reading of the file, each judged at its own date.
    widgets::Timeline<Entry> timeline(const Context& context) const {
        auto file = snapshot::load<Snapshot>(source);
        return widgets::minuteTimeline(
            source.clock(), [file = std::move(file), choice = context.choice](Date date) {
                return Entry{date, Display::resolve(file, choice, date)};
            });
    }

    /// For placeholders, and for previews without pins: built on first use, of that moment, and
    /// then the same for the life of the process.
    const Display& sample() const {
        static const Date now = source.clock();
        static const Display display{Pinned<Snapshot>{Kind::sample(now), now - 40, false}};
        return display;
    }
};

}  // namespace tessary::pins
