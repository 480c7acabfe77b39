// The metrics that there are, as ListMetrics tells of them.
//
//     toJSON(MetricsQuery{.namespace_ = "AWS/SQS"})             // {"Namespace":"AWS/SQS"}
//     decodeJSON<MetricsPage>(body).value().metrics->front().name
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "feed/aws/metric.h"
#include "platform/foundation/json_decoding.h"

namespace tessary::aws {

/// What is asked for: a page of all that have these; 500 are in one.
struct MetricsQuery {
    std::optional<std::string> namespace_{};
    std::optional<std::string> name{};
    std::optional<std::vector<Dimension>> dimensions{};  ///< at least these
    std::optional<std::string> recently{};  ///< "PT3H": in the last three hours; else two weeks
    std::optional<std::string> next{};      ///< as the page before said
};

struct MetricsPage {
    std::optional<std::vector<Metric>> metrics{};
    std::optional<std::string> next{};  ///< there is another page
};

}  // namespace tessary::aws

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<aws::MetricsQuery> = std::tuple{
    Field{"Namespace", &aws::MetricsQuery::namespace_, Key::ifPresent},
    Field{"MetricName", &aws::MetricsQuery::name, Key::ifPresent},
    Field{"Dimensions", &aws::MetricsQuery::dimensions, Key::ifPresent},
    Field{"RecentlyActive", &aws::MetricsQuery::recently, Key::ifPresent},
    Field{"NextToken", &aws::MetricsQuery::next, Key::ifPresent},
};

template <>
inline constexpr auto fieldsOf<aws::MetricsPage> = std::tuple{
    Field{"Metrics", &aws::MetricsPage::metrics},
    Field{"NextToken", &aws::MetricsPage::next},
};

}  // namespace tessary::foundation
