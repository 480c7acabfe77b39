// The records of "widgets/alarm-pins.json" and "widgets/metrics.json": what the user pinned in the
// host application.
//
// Both files have the same header and a list of pins. `std::optional` members may be missing or
// null; every other key is required. Nothing is sorted, judged or made unique.
//
//     decodeJSON<MetricPinsSnapshot>(bytes).value().pins.front().label      // "orders-db CPU"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/json_decoding.h"

namespace tessary::snapshot {

/// One sample of a time series.
struct SnapshotPoint {
    std::int64_t t{};  ///< milliseconds since 1970
    double v{};        ///< in the pin's unit
    bool operator==(const SnapshotPoint&) const = default;
};

/// A pinned alarm.
struct AlarmPin {
    static constexpr const char* fileName = "alarm-pins";

    std::string id{};
    std::string label{};
    std::string profile{};
    std::string region{};
    std::string alarmName{};
    std::optional<std::string> state{};  ///< "ALARM", "OK", "INSUFFICIENT_DATA"
    std::string reason{};
    std::optional<std::int64_t> stateUpdatedMs{};  ///< milliseconds since 1970
    std::optional<double> threshold{};             ///< in the metric's unit
    std::optional<std::string> comparison{};
    std::optional<std::string> unit{};  ///< as CloudWatch names it
    std::optional<std::string> metricName{};
    std::optional<std::int64_t> periodSeconds{};
    std::vector<SnapshotPoint> points{};  ///< oldest first
    std::optional<SnapshotPoint> latest{};
    std::optional<std::string> error{};  ///< why it could not be refreshed
    bool authExpired{};                  ///< its profile's sign-in has expired
    bool operator==(const AlarmPin&) const = default;
};

/// A pinned metric.
struct MetricPin {
    static constexpr const char* fileName = "metrics";

    std::string id{};
    std::string label{};
    std::string profile{};
    std::string region{};
    std::string namespace_{};
    std::string metricName{};
    std::string stat{};  ///< the statistic, "Average"
    std::int64_t periodSeconds{};
    std::optional<std::string> unit{};
    std::vector<SnapshotPoint> points{};
    std::optional<SnapshotPoint> latest{};
    std::optional<std::string> error{};
    bool authExpired{};
    bool operator==(const MetricPin&) const = default;
};

/// What is pinned of a kind, in the host application's order.
template <class PinRecord>
struct PinsSnapshot {
    using Pin = PinRecord;
    static constexpr const char* fileName = Pin::fileName;

    std::int64_t schemaVersion{};
    std::int64_t updatedMs{};        ///< milliseconds since 1970
    std::int64_t intervalSeconds{};  ///< between the host application's refreshes
    std::vector<Pin> pins{};
    bool operator==(const PinsSnapshot&) const = default;
};
using AlarmPinsSnapshot = PinsSnapshot<AlarmPin>;
using MetricPinsSnapshot = PinsSnapshot<MetricPin>;

}  // namespace tessary::snapshot

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<snapshot::SnapshotPoint> = std::tuple{
    Field{"t", &snapshot::SnapshotPoint::t},
    Field{"v", &snapshot::SnapshotPoint::v},
};

template <>
inline constexpr auto fieldsOf<snapshot::AlarmPin> = std::tuple{
    Field{"id", &snapshot::AlarmPin::id},
    Field{"label", &snapshot::AlarmPin::label},
    Field{"profile", &snapshot::AlarmPin::profile},
    Field{"region", &snapshot::AlarmPin::region},
    Field{"alarmName", &snapshot::AlarmPin::alarmName},
    Field{"state", &snapshot::AlarmPin::state},
    Field{"reason", &snapshot::AlarmPin::reason},
    Field{"stateUpdatedMs", &snapshot::AlarmPin::stateUpdatedMs},
    Field{"threshold", &snapshot::AlarmPin::threshold},
    Field{"comparison", &snapshot::AlarmPin::comparison},
    Field{"unit", &snapshot::AlarmPin::unit},
    Field{"metricName", &snapshot::AlarmPin::metricName},
    Field{"periodSeconds", &snapshot::AlarmPin::periodSeconds},
    Field{"points", &snapshot::AlarmPin::points},
    Field{"latest", &snapshot::AlarmPin::latest},
    Field{"error", &snapshot::AlarmPin::error},
    Field{"authExpired", &snapshot::AlarmPin::authExpired},
};

template <>
inline constexpr auto fieldsOf<snapshot::MetricPin> = std::tuple{
    Field{"id", &snapshot::MetricPin::id},
    Field{"label", &snapshot::MetricPin::label},
    Field{"profile", &snapshot::MetricPin::profile},
    Field{"region", &snapshot::MetricPin::region},
    Field{"namespace", &snapshot::MetricPin::namespace_},
    Field{"metricName", &snapshot::MetricPin::metricName},
    Field{"stat", &snapshot::MetricPin::stat},
    Field{"periodSeconds", &snapshot::MetricPin::periodSeconds},
    Field{"unit", &snapshot::MetricPin::unit},
    Field{"points", &snapshot::MetricPin::points},
    Field{"latest", &snapshot::MetricPin::latest},
    Field{"error", &snapshot::MetricPin::error},
    Field{"authExpired", &snapshot::MetricPin::authExpired},
};

template <class Pin>
inline constexpr auto fieldsOf<snapshot::PinsSnapshot<Pin>> = std::tuple{
    Field{"schemaVersion", &snapshot::PinsSnapshot<Pin>::schemaVersion},
    Field{"updatedMs", &snapshot::PinsSnapshot<Pin>::updatedMs},
    Field{"intervalSeconds", &snapshot::PinsSnapshot<Pin>::intervalSeconds},
    Field{"pins", &snapshot::PinsSnapshot<Pin>::pins},
};

}  // namespace tessary::foundation
