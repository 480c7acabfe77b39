// Surroundings of a test's own: container, clock, locale and zone. Nothing is the machine's.
#pragma once

#include "platform/foundation/fixtures.h"
#include "platform/foundation/surroundings.h"

namespace tessary {

/// When the example document was written, and forty seconds later.
inline constexpr foundation::Date exampleUpdated{1731772800};
inline constexpr foundation::Date exampleNow{1731772840};

/// Two profiles in three regions, one of them signed out; four alarms, three of them listed.
inline constexpr const char* exampleAlarms = R"({
  "schemaVersion": 1,
  "state": "watching",
  "updatedMs": 1731772800000,
  "intervalSeconds": 60,
  "firing": 4,
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

/// A group's container with the folder "widgets" in it; goes when the test does.
class Container : public foundation::TemporaryFolder {
public:
    Container() { std::filesystem::create_directory(*this / "widgets"); }

    std::filesystem::path root() const { return *this / ""; }
    void put(const std::string& name, const std::string& bytes) const {
        write("widgets/" + name + ".json", bytes);
    }
    /// The surroundings of a program whose group shares this folder.
    foundation::Surroundings surroundings(foundation::Date now = exampleNow) const {
        return {.clock = [now] { return now; },
                .information = [](auto) { return "A1.com.tessary.desktop"; },
                .container = [root = root()](auto) { return root; },
                .locale = {"en_US", "UTC"}};
    }
};

}  // namespace tessary
