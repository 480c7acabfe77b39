// The two pin files in a container, written by the tests.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "alarm_pin/alarm_pin_provider.h"
#include "metric/metric_provider.h"
#include "support/container.h"

namespace tessary::pins {

/// What the two widgets of one pin have each of their own.
struct AlarmWidget {
    static constexpr const char* name = "alarm";
    using Snapshot = snapshot::AlarmPinsSnapshot;
    using Provider = alarm_pin::AlarmPinProvider;
    using Query = alarm_pin::AlarmPinQuery;
    static constexpr const char* details = R"("alarmName":"","reason":"")";
    static constexpr const char* detail = "prod · eu-west-1";
    static auto now() { return alarm_pin::AlarmPinPreviewData::now(); }
    static const auto& sample() { return alarm_pin::AlarmPinPreviewData::alarm(); }
};
struct MetricWidget {
    static constexpr const char* name = "metric";
    using Snapshot = snapshot::MetricPinsSnapshot;
    using Provider = metric::MetricProvider;
    using Query = metric::MetricPinQuery;
    static constexpr const char* details =
        R"("namespace":"n","metricName":"CPU","stat":"","periodSeconds":60)";
    static constexpr const char* detail = "CPU ·  · prod · eu-west-1";
    static auto now() { return metric::MetricPreviewData::now(); }
    static const auto& sample() { return metric::MetricPreviewData::cpu(); }
};
using BothWidgets = testing::Types<AlarmWidget, MetricWidget>;

/// A file of pins with these identifiers, labelled by their places: "#0", "#1".
template <class Widget>
std::string file(const std::vector<std::string>& ids, int schema = 1, int interval = 200) {
    std::string pins;
    for (std::size_t i = 0; i < ids.size(); ++i)
        pins += (i == 0 ? "" : ",") + std::string{R"({"id":")"} + ids[i] + R"(","label":"#)" +
                std::to_string(i) + R"(","profile":"prod","region":"eu-west-1",)" +
                Widget::details + R"(,"points":[],"authExpired":false})";
    return R"({"schemaVersion":)" + std::to_string(schema) +
           R"(,"updatedMs":1731772800000,"intervalSeconds":)" + std::to_string(interval) +
           R"(,"pins":[)" + pins + "]}";
}

}  // namespace tessary::pins
