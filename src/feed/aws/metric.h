// A metric as CloudWatch names it, and a series that is made of metrics.
//
//     toJSON(MetricQuery{.id = "m", .stat = MetricStat{{"AWS/SQS", "Age"}, 300, "Maximum"}})
//         // {"Id":"m","MetricStat":{"Metric":{"Namespace":"AWS/SQS","MetricName":"Age"},...}}
//
// An alarm tells what it watches in the same records in which GetMetricData is asked for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/json_decoding.h"

namespace tessary::aws {

/// A number as CloudWatch tells it: one that is none comes as a text, "NaN" or "Infinity".
using Figure = std::variant<std::monostate, double, std::string>;

/// The number, where it is a finite one.
inline std::optional<double> finite(const Figure& figure) {
    const double* number = std::get_if<double>(&figure);
    return number ? std::optional{*number} : std::nullopt;  // no text in JSON overflows to another
}

struct Dimension {
    std::string name{};
    std::string value{};
    bool operator==(const Dimension&) const = default;
};

struct Metric {
    std::optional<std::string> namespace_{};
    std::optional<std::string> name{};
    std::optional<std::vector<Dimension>> dimensions{};
    bool operator==(const Metric&) const = default;
};

struct MetricStat {
    Metric metric{};
    std::int64_t period{};    ///< seconds
    std::string statistic{};  ///< "Average", "p99", "tm95"
    std::optional<std::string> unit{};
    bool operator==(const MetricStat&) const = default;
};

/// A metric, or an expression of others, by their ids.
struct MetricQuery {
    std::string id{};
    std::optional<MetricStat> stat{};
    std::optional<std::string> expression{};
    std::optional<bool> isReturned{};      ///< unless told otherwise it is
    std::optional<std::int64_t> period{};  ///< of an expression that finds its metrics itself
    std::optional<std::string> account{};  ///< where it is another's
    bool operator==(const MetricQuery&) const = default;
};

}  // namespace tessary::aws

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<aws::Dimension> = std::tuple{
    Field{"Name", &aws::Dimension::name},
    Field{"Value", &aws::Dimension::value},
};

template <>
inline constexpr auto fieldsOf<aws::Metric> = std::tuple{
    Field{"Namespace", &aws::Metric::namespace_, Key::ifPresent},
    Field{"MetricName", &aws::Metric::name, Key::ifPresent},
    Field{"Dimensions", &aws::Metric::dimensions, Key::ifPresent},
};

template <>
inline constexpr auto fieldsOf<aws::MetricStat> = std::tuple{
    Field{"Metric", &aws::MetricStat::metric},
    Field{"Period", &aws::MetricStat::period},
    Field{"Stat", &aws::MetricStat::statistic},
    Field{"Unit", &aws::MetricStat::unit, Key::ifPresent},
};

template <>
inline constexpr auto fieldsOf<aws::MetricQuery> = std::tuple{
    Field{"Id", &aws::MetricQuery::id},
    Field{"MetricStat", &aws::MetricQuery::stat, Key::ifPresent},
    Field{"Expression", &aws::MetricQuery::expression, Key::ifPresent},
    Field{"ReturnData", &aws::MetricQuery::isReturned, Key::ifPresent},
    Field{"Period", &aws::MetricQuery::period, Key::ifPresent},
    Field{"AccountId", &aws::MetricQuery::account, Key::ifPresent},
};

}  // namespace tessary::foundation
