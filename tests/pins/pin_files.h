// The file of one of the pin widgets, written by the tests. What both do is one template's; they
// differ in the sample and in what stands below a pin's label.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "alarm_pin/alarm_pin_provider.h"
#include "metric/metric_provider.h"
#include "support/container.h"

namespace tessary::pins {

/// A file of pins with these identifiers, labelled by their places: "#0", "#1".
inline std::string file(const std::vector<std::string>& ids, int schema = 1) {
    std::string pins;
    for (std::size_t i = 0; i < ids.size(); ++i)
        pins += (i == 0 ? "" : ",") + std::string{R"({"id":")"} + ids[i] + R"(","label":"#)" +
                std::to_string(i) + R"(","profile":"prod","region":"eu-west-1","alarmName":"",)" +
                R"("namespace":"n","metricName":"CPU","stat":"Sum","periodSeconds":60,)" +
                R"("reason":"","points":[],"authExpired":false})";
    return R"({"schemaVersion":)" + std::to_string(schema) +
           R"(,"updatedMs":1731772800000,"intervalSeconds":200,"pins":[)" + pins + "]}";
}

}  // namespace tessary::pins
