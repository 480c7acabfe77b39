// Answers a host's requests for a widget of one pin.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "pins/pin_display.h"
#include "platform/intents/entity.h"
#include "platform/system/surroundings.h"
#include "platform/widgets/minute_timeline.h"
#include "platform/widgets/provider_context.h"

namespace tessary::pins {

/// The user's choice.
struct PinConfiguration {
    std::optional<intents::AppEntity> pin{};

    std::optional<std::string> pinID() const { return pin ? std::optional{pin->id} : std::nullopt; }
    bool operator==(const PinConfiguration&) const = default;
};

template <class Snapshot>
struct PinEntry {
    Date date{};  ///< when it is to be shown, and the moment that its view takes for now
    PinDisplay<Snapshot> display;
    bool operator==(const PinEntry&) const = default;
};

/// Keeps nothing between requests: each reads the file and the clock afresh, on the caller's
/// thread. No request fails. `sample` gives the display for placeholders and for previews without
/// pins.
template <class Snapshot>
struct PinProvider {
    using Configuration = PinConfiguration;
    using Context = widgets::ProviderContext;
    using Entry = PinEntry<Snapshot>;

    const PinDisplay<Snapshot>& (*sample)(){};

    /// The sample, now; reads no file.
    Entry placeholder(const Context&) const { return {currentTime(), sample()}; }

    /// The chosen pin now; the sample instead for a preview where nothing is pinned.
    Entry snapshot(const PinConfiguration& configuration, const Context& context) const {
        const std::optional<Snapshot> file = readFile();
        const bool nothingPinned = !file || file->pins.empty();
        const Date now = currentTime();
        if (context.isPreview && nothingPinned) return {now, sample()};
        return {now, PinDisplay<Snapshot>::resolve(file, configuration.pinID(), now)};
    }

    /// Five entries, a minute apart, of one reading of the file, each judged at its own date.
    widgets::Timeline<Entry> timeline(const PinConfiguration& configuration, const Context&) const {
        const std::optional<Snapshot> file = readFile();
        return widgets::minuteTimeline(currentTime(), [&](Date date) {
            return Entry{date, PinDisplay<Snapshot>::resolve(file, configuration.pinID(), date)};
        });
    }

private:
    static Date currentTime() { return system::surroundings().clock(); }
    static std::optional<Snapshot> readFile() {
        return supported(snapshot::SnapshotStore::read<Snapshot>(Snapshot::fileName));
    }
};

/// The series of a sample: 36 points, one every five minutes, the last at `now`; two sine waves of
/// `amplitude` around `level`.
std::vector<snapshot::SnapshotPoint> sampleSeries(Date now, double amplitude, double level);

/// Whole milliseconds since 1970, cut off; the nearest there are for a date more than 146 million
/// years away.
std::int64_t milliseconds(Date date);

}  // namespace tessary::pins
