// The records of the three files: which key fills which member. What each takes and refuses,
// scripts/check-schemas tries at every place.
#include <gtest/gtest.h>

#include "snapshot/alarms_snapshot.h"
#include "snapshot/pins_snapshot.h"
#include "support/container.h"
#include "support/golden.h"

namespace tessary::snapshot {
namespace {

using foundation::decodeJSON;

std::string stored(const char* name) { return contents(storedGolden(name, __FILE__)); }

TEST(Snapshots, PutEveryKeyIntoItsMember) {
    const AlarmsSnapshot alarms{
        1,
        "watching",
        1731772800000,
        60,
        4,
        {{"prod", "us-east-1", 2, false, false},
         {"prod", "eu-west-1", 1, false, true},
         {"shared", "us-east-1", 1, true, false}},
        {{"api-5xx-rate-high", "prod", "us-east-1", 1731772740000, "Threshold Crossed"},
         {"orders-queue-age", "prod", "eu-west-1", {}, "Threshold Crossed"},
         {"ingest-lambda-errors", "shared", "us-east-1", {}, ""}}};
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(exampleAlarms).value(), alarms);
    EXPECT_EQ((Alarm{"n", "p", "r", 1, "w"}).identity(), (std::string{"p\0r\0n", 5}));
    const AlarmPinsSnapshot::Pin alarm{"i",         "l",  "p", "r", "a", "s", "w",
                                       8,           9.25, "c", "u", "m", 13,  {{-1, 42.5}},
                                       {{7, -3.5}}, "e",  true};
    const MetricPinsSnapshot::Pin metric{"i", "l", "p",          "r",         "n", "m", "s",
                                         13,  "u", {{-1, 42.5}}, {{7, -3.5}}, "e", true};
    EXPECT_EQ(decodeJSON<AlarmPinsSnapshot>(stored("alarm-pins.json")).value(),
              (AlarmPinsSnapshot{1, 2, 3, {alarm}}));
    EXPECT_EQ(decodeJSON<MetricPinsSnapshot>(stored("metrics.json")).value(),
              (MetricPinsSnapshot{1, 2, 3, {metric}}));
}

}  // namespace
}  // namespace tessary::snapshot
