// A shared container of a test's own, and a clock that stands.
#pragma once

#include "snapshot/source.h"
#include "support/fixtures.h"

namespace tessary {

/// Two profiles in three regions, one of them signed out; four alarms, three of them listed.
inline const std::string exampleAlarms =
    contents(std::filesystem::path{__FILE__}.parent_path() / "alarms.json");
/// A file of pins, of alarms or of metrics, with these identifiers, labelled by their places: "#0".
inline std::string examplePins(const std::vector<std::string>& ids, int schema = 1) {
    std::string pins;
    for (std::size_t i = 0; i < ids.size(); ++i)
        pins += std::string{i == 0 ? "" : ","} + R"({"id":")" + ids[i] + R"(","label":"#)" +
                std::to_string(i) + R"(","profile":"prod","region":"eu-west-1","alarmName":"",)" +
                R"("namespace":"n","metricName":"CPU","stat":"Sum","periodSeconds":60,)" +
                R"("reason":"","points":[],"authExpired":false})";
    return R"({"schemaVersion":)" + std::to_string(schema) +
           R"(,"updatedMs":1731772800000,"intervalSeconds":60,"pins":[)" + pins + "]}";
}
inline constexpr foundation::Date exampleUpdated{1731772800};
inline constexpr foundation::Date exampleNow{1731772840};

/// A group's container with the folder "widgets" in it; goes when the test does.
class Container : public TemporaryFolder {
public:
    Container() { std::filesystem::create_directory(*this / "widgets"); }

    void put(const std::string& name, const std::string& bytes) const {
        write(("widgets/" + name).append(".json"), bytes);
    }
    snapshot::Source source() const {
        return {.places = {.container = *this / ""}, .clock = [] { return exampleNow; }};
    }
};

}  // namespace tessary
