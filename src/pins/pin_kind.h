// What tells the widgets of one pin apart: the file of their pins, their words and their layout.
// Provider, query and view are written once, here, for any kind of pin:
//
//     struct MetricPin {
//         static constexpr const char* widget = "com.example.metric";    // identifies it to hosts
//         using Snapshot = snapshot::MetricPinsSnapshot;
//         static PinWords words();
//         static std::string detail(const Snapshot::Pin& pin);    // below its label in an editor
//         static Snapshot::Pin sample(Date now);                  // for previews
//         static std::optional<std::string> link(const Snapshot::Pin* shown);
//         static View layout(const Pinned<Snapshot>& state, WidgetFamily family);
//     };
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/foundation/date.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::pins {

struct PinWords {
    std::string heading{};  ///< the widget's name, in a gallery and where it has nothing to show
    std::string description{};  ///< of the widget, in a gallery
    std::string title{};        ///< of the parameter in an editor
    std::string entityType{};   ///< what one choice is called
    // For a widget that has nothing to show:
    std::string howToPin{};
    std::string chooseTitle{};
    std::string howToChoose{};
    std::string removed{};
};

/// The series of a sample: 36 points, one every five minutes, the last at `now`; two sine waves of
/// `amplitude` around `level`.
std::vector<snapshot::SnapshotPoint> sampleSeries(foundation::Date now, double amplitude,
                                                  double level);

/// Whole milliseconds since 1970, cut off; the nearest there are for a date more than 146 million
/// years away.
std::int64_t milliseconds(foundation::Date date);

}  // namespace tessary::pins
