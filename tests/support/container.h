// A shared container and surroundings of a test's own: clock, locale and zone, nothing the
// machine's.
#pragma once

#include "platform/system/surroundings.h"
#include "support/fixtures.h"

namespace tessary {

/// Two profiles in three regions, one of them signed out; four alarms, three of them listed.
inline constexpr const char* exampleAlarms = R"({
  "schemaVersion": 1, "state": "watching", "updatedMs": 1731772800000, "intervalSeconds": 60, "firing": 4,
  "targets": [
    { "profile": "prod", "region": "us-east-1", "firing": 2, "authExpired": false, "failed": false },
    { "profile": "prod", "region": "eu-west-1", "firing": 1, "authExpired": false, "failed": true },
    { "profile": "shared", "region": "us-east-1", "firing": 1, "authExpired": true, "failed": false }
  ],
  "topAlarms": [
    { "name": "api-5xx-rate-high", "profile": "prod", "region": "us-east-1", "updatedMs": 1731772740000, "reason": "Threshold Crossed" },
    { "name": "orders-queue-age", "profile": "prod", "region": "eu-west-1", "reason": "Threshold Crossed" },
    { "name": "ingest-lambda-errors", "profile": "shared", "region": "us-east-1", "updatedMs": null, "reason": "" }
  ]
})";
inline constexpr foundation::Date exampleUpdated{1731772800};
inline constexpr foundation::Date exampleNow{1731772840};

/// A group's container with the folder "widgets" in it; goes when the test does.
class Container : public TemporaryFolder {
public:
    Container() { std::filesystem::create_directory(*this / "widgets"); }

    void put(const std::string& name, const std::string& bytes) const {
        write("widgets/" + name + ".json", bytes);
    }
    /// Surroundings in which this is the container of the program's group.
    system::Surroundings surroundings() const {
        return {.clock = [] { return exampleNow; },
                .information = [](auto) { return "A1.com.tessary.desktop"; },
                .container = [root = *this / ""](auto) { return root; },
                .locale = {"en_US", "UTC"}};
    }
};

}  // namespace tessary
