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

/// The pinned alarms, in the host application's order.
struct AlarmPinsSnapshot {
    struct Pin {
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
        bool operator==(const Pin&) const = default;
    };
    static constexpr const char* fileName = "alarm-pins";

    std::int64_t schemaVersion{};
    std::int64_t updatedMs{};        ///< milliseconds since 1970
    std::int64_t intervalSeconds{};  ///< between the host application's refreshes
    std::vector<Pin> pins{};
    bool operator==(const AlarmPinsSnapshot&) const = default;
};

/// The pinned metrics, in the host application's order.
struct MetricPinsSnapshot {
    struct Pin {
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
        bool operator==(const Pin&) const = default;
    };
    static constexpr const char* fileName = "metrics";

    std::int64_t schemaVersion{};
    std::int64_t updatedMs{};
    std::int64_t intervalSeconds{};
    std::vector<Pin> pins{};
    bool operator==(const MetricPinsSnapshot&) const = default;
};

}  // namespace tessary::snapshot

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<snapshot::SnapshotPoint> = std::tuple{
    Field{"t", &snapshot::SnapshotPoint::t},
    Field{"v", &snapshot::SnapshotPoint::v},
};

template <>
inline constexpr auto fieldsOf<snapshot::AlarmPinsSnapshot::Pin> = std::tuple{
    Field{"id", &snapshot::AlarmPinsSnapshot::Pin::id},
    Field{"label", &snapshot::AlarmPinsSnapshot::Pin::label},
    Field{"profile", &snapshot::AlarmPinsSnapshot::Pin::profile},
    Field{"region", &snapshot::AlarmPinsSnapshot::Pin::region},
    Field{"alarmName", &snapshot::AlarmPinsSnapshot::Pin::alarmName},
    Field{"state", &snapshot::AlarmPinsSnapshot::Pin::state},
    Field{"reason", &snapshot::AlarmPinsSnapshot::Pin::reason},
    Field{"stateUpdatedMs", &snapshot::AlarmPinsSnapshot::Pin::stateUpdatedMs},
    Field{"threshold", &snapshot::AlarmPinsSnapshot::Pin::threshold},
    Field{"comparison", &snapshot::AlarmPinsSnapshot::Pin::comparison},
    Field{"unit", &snapshot::AlarmPinsSnapshot::Pin::unit},
    Field{"metricName", &snapshot::AlarmPinsSnapshot::Pin::metricName},
    Field{"periodSeconds", &snapshot::AlarmPinsSnapshot::Pin::periodSeconds},
    Field{"points", &snapshot::AlarmPinsSnapshot::Pin::points},
    Field{"latest", &snapshot::AlarmPinsSnapshot::Pin::latest},
    Field{"error", &snapshot::AlarmPinsSnapshot::Pin::error},
    Field{"authExpired", &snapshot::AlarmPinsSnapshot::Pin::authExpired},
};

template <>
inline constexpr auto fieldsOf<snapshot::AlarmPinsSnapshot> = std::tuple{
    Field{"schemaVersion", &snapshot::AlarmPinsSnapshot::schemaVersion},
    Field{"updatedMs", &snapshot::AlarmPinsSnapshot::updatedMs},
    Field{"intervalSeconds", &snapshot::AlarmPinsSnapshot::intervalSeconds},
    Field{"pins", &snapshot::AlarmPinsSnapshot::pins},
};

template <>
inline constexpr auto fieldsOf<snapshot::MetricPinsSnapshot::Pin> = std::tuple{
    Field{"id", &snapshot::MetricPinsSnapshot::Pin::id},
    Field{"label", &snapshot::MetricPinsSnapshot::Pin::label},
    Field{"profile", &snapshot::MetricPinsSnapshot::Pin::profile},
    Field{"region", &snapshot::MetricPinsSnapshot::Pin::region},
    Field{"namespace", &snapshot::MetricPinsSnapshot::Pin::namespace_},
    Field{"metricName", &snapshot::MetricPinsSnapshot::Pin::metricName},
    Field{"stat", &snapshot::MetricPinsSnapshot::Pin::stat},
    Field{"periodSeconds", &snapshot::MetricPinsSnapshot::Pin::periodSeconds},
    Field{"unit", &snapshot::MetricPinsSnapshot::Pin::unit},
    Field{"points", &snapshot::MetricPinsSnapshot::Pin::points},
    Field{"latest", &snapshot::MetricPinsSnapshot::Pin::latest},
    Field{"error", &snapshot::MetricPinsSnapshot::Pin::error},
    Field{"authExpired", &snapshot::MetricPinsSnapshot::Pin::authExpired},
};

template <>
inline constexpr auto fieldsOf<snapshot::MetricPinsSnapshot> = std::tuple{
    Field{"schemaVersion", &snapshot::MetricPinsSnapshot::schemaVersion},
    Field{"updatedMs", &snapshot::MetricPinsSnapshot::updatedMs},
    Field{"intervalSeconds", &snapshot::MetricPinsSnapshot::intervalSeconds},
    Field{"pins", &snapshot::MetricPinsSnapshot::pins},
};

}  // namespace tessary::foundation
