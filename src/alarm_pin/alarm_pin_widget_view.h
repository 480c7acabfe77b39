// What an alarm's pin looks like: the parts of both sizes.
//
// Pure functions of what they show and what is inherited: no file is read here, and no clock.
#pragma once

#include <optional>
#include <string>

#include "alarm_pin/alarm_pin_display.h"
#include "platform/views/view.h"

namespace tessary::alarm_pin {

using views::View;

/// A dot and the state in words.
struct StateBadge {
    std::optional<std::string> state{};
    bool muted{};

    View body() const;
};

/// Value, threshold and time of the latest sample; without one, since when the state holds; without
/// that, where the alarm is.
struct LatestSample {
    std::optional<snapshot::SnapshotPoint> latest{};
    std::optional<double> threshold{};
    std::optional<std::string> unit{};
    std::optional<Date> since{};
    std::string place{};

    View body(const views::Environment& environment) const;
    bool operator==(const LatestSample&) const = default;

private:
    View text(const views::Environment& environment) const;
};

}  // namespace tessary::alarm_pin
