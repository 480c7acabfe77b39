#include "snapshot/pins_snapshot.h"

#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"

namespace tessary::snapshot {
namespace {

using foundation::decodeJSON;

/// The keys of a file's pins with a letter for what each holds: s text, i integer, n number, b
/// flag, a points, o a point, p pins; a capital where it may be absent.
template <class Snapshot>
const std::string pinKeys;
template <>
const std::string pinKeys<AlarmPinsSnapshot> =
    "id=s label=s profile=s region=s alarmName=s state=S reason=s stateUpdatedMs=I threshold=N "
    "comparison=S unit=S metricName=S periodSeconds=I points=a latest=O error=S authExpired=b";
template <>
const std::string pinKeys<MetricPinsSnapshot> =
    "id=s label=s profile=s region=s namespace=s metricName=s stat=s periodSeconds=i unit=S "
    "points=a latest=O error=S authExpired=b";
const std::string headerKeys = "schemaVersion=i updatedMs=i intervalSeconds=i pins=p";

/// An object of the keys: texts are their own keys, numbers their places. One key may have another
/// value, "" for none; `spare` is the value of all that may be absent, "+" for their own.
std::string object(const std::string& keys, const std::string& pins, const std::string& spare = "+",
                   const std::string& changed = "-", const std::string& change = "") {
    std::string text = "{";
    int place = 0;
    for (const auto& [key, kind] : foundation::pairs(keys)) {
        const std::string number = std::to_string(++place);
        std::string value;
        switch (std::tolower(kind[0])) {
            case 's': value = '"' + key + '"'; break;
            case 'i': value = number; break;
            case 'n': value = number + ".25"; break;
            case 'b': value = "true"; break;
            case 'a': value = R"([{"t":-1,"v":42},{"v":0.5,"t":2.0}])"; break;
            case 'o': value = R"({"t":7,"v":-3.5})"; break;
            default: value = pins;
        }
        if (std::isupper(kind[0]) && spare != "+") value = spare;
        if (key == changed) value = change;
        if (!value.empty()) text += (text == "{" ? "\"" : ",\"") + key + "\":" + value;
    }
    return text + "}";
}

template <class Snapshot>
typename Snapshot::Pin onlyPin(const std::string& spare) {
    const auto text = object(headerKeys, "[" + object(pinKeys<Snapshot>, "", spare) + "]");
    return decodeJSON<Snapshot>(text).value().pins.at(0);
}

const std::vector<SnapshotPoint> bothPoints{{-1, 42.0}, {2, 0.5}};

TEST(PinsSnapshot, PutsEveryKeyIntoItsMember) {
    AlarmPinsSnapshot::Pin alarm{.id = "id",
                                 .label = "label",
                                 .profile = "profile",
                                 .region = "region",
                                 .alarmName = "alarmName",
                                 .reason = "reason",
                                 .points = bothPoints,
                                 .authExpired = true};
    MetricPinsSnapshot::Pin metric{.id = "id",
                                   .label = "label",
                                   .profile = "profile",
                                   .region = "region",
                                   .namespace_ = "namespace",
                                   .metricName = "metricName",
                                   .stat = "stat",
                                   .periodSeconds = 8,
                                   .points = bothPoints,
                                   .authExpired = true};
    for (const char* absent : {"", "null"}) {
        EXPECT_EQ(onlyPin<AlarmPinsSnapshot>(absent), alarm);
        EXPECT_EQ(onlyPin<MetricPinsSnapshot>(absent), metric);
    }
    alarm.state = "state";
    alarm.stateUpdatedMs = 8;
    alarm.threshold = 9.25;
    alarm.comparison = "comparison";
    alarm.metricName = "metricName";
    alarm.periodSeconds = 13;
    alarm.unit = metric.unit = "unit";
    alarm.latest = metric.latest = SnapshotPoint{7, -3.5};
    alarm.error = metric.error = "error";
    EXPECT_EQ(onlyPin<AlarmPinsSnapshot>("+"), alarm);
    EXPECT_EQ(onlyPin<MetricPinsSnapshot>("+"), metric);
}

template <class Snapshot>
struct PinsSnapshotFile : testing::Test {};
using Files = testing::Types<AlarmPinsSnapshot, MetricPinsSnapshot>;
TYPED_TEST_SUITE(PinsSnapshotFile, Files);

TYPED_TEST(PinsSnapshotFile, HoldsPinsInFileOrderRepeatedOnesIncluded) {
    const auto pin = [](const std::string& id) {
        return object(pinKeys<TypeParam>, "", "", "id", '"' + id + "\",\"later\":[{\"id\":null}]");
    };
    const auto text = object(headerKeys, "[" + pin("b") + "," + pin("a") + "," + pin("b") + "]");
    const auto file = decodeJSON<TypeParam>(text).value();
    EXPECT_EQ(file.schemaVersion, 1);
    EXPECT_EQ(file.updatedMs, 2);
    EXPECT_EQ(file.intervalSeconds, 3);
    std::string ids;
    for (const auto& each : file.pins) ids += each.id;
    EXPECT_EQ(ids, "bab");
}

TYPED_TEST(PinsSnapshotFile, NeedsEveryKeyInItsKind) {
    // Values with the kinds that they may stand for; "?" for whatever may be absent.
    const std::vector<std::pair<std::string, std::string>> values{
        {"", "?"},
        {"null", "?"},
        {R"("80")", "s"},
        {R"("")", "s"},
        {"true", "b"},
        {"0", "in"},
        {"42.0", "in"},
        {"-3e2", "in"},
        {"9223372036854775807", "in"},
        {"9223372036854775808", "n"},
        {"300.5", "n"},
        {"1e400", ""},
        {"[]", "ap"},
        {"{}", ""},
        {"[7]", ""},
        {"[null]", ""},
        {"[{}]", ""},
        {R"([{"t":1,"v":2}])", "a"},
        {R"([{"t":1,"v":2},{"t":1}])", ""},
        {R"({"t":1,"v":42,"w":0})", "o"},
        {R"({"t":1.5,"v":2})", ""},
        {R"({"t":1,"v":"2"})", ""},
        {R"({"T":1,"v":2})", ""},
        {R"({"t":1,"v":null})", ""}};
    const std::string& keys = pinKeys<TypeParam>;
    for (const bool inHeader : {true, false}) {
        for (const auto& [key, kind] : foundation::pairs(inHeader ? headerKeys : keys)) {
            for (const auto& [value, kinds] : values) {
                const std::string pin = object(keys, "", "+", inHeader ? "-" : key, value);
                const std::string text =
                    object(headerKeys, "[" + object(keys, "") + "," + pin + "]", "+",
                           inHeader ? key : "-", value);
                const char wanted = static_cast<char>(std::tolower(kind[0]));
                const bool accepted = kinds == "?" ? std::isupper(kind[0]) != 0
                                                   : kinds.find(wanted) != std::string::npos;
                EXPECT_EQ(static_cast<bool>(decodeJSON<TypeParam>(text)), accepted) << text;
            }
        }
    }
}

}  // namespace
}  // namespace tessary::snapshot
