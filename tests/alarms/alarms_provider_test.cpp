#include "alarms/alarms_provider.h"

#include <gtest/gtest.h>

#include "snapshot/snapshot_store.h"
#include "support/container.h"

namespace tessary::alarms {
namespace {

using foundation::ScopedSurroundings;
using foundation::Surroundings;

/// A provider in a container, with a clock that goes on by `tick` each time it is asked and a count
/// of the reads.
struct Host {
    Container container{};
    double time{exampleNow.seconds};
    double tick{};
    int reads{};
    int completions{};
    ScopedSurroundings scope{surroundings()};

    Surroundings surroundings() {
        Surroundings result = container.surroundings();
        result.clock = [this] { return Date{std::exchange(time, time + tick)}; };
        result.container = [this](auto) { return ++reads, container.root(); };
        return result;
    }
    AlarmsEntry snapshot(bool preview) {
        std::optional<AlarmsEntry> result;
        AlarmsProvider{}.getSnapshot({.isPreview = preview}, [&](AlarmsEntry entry) {
            ++completions;
            result = std::move(entry);
        });
        return result.value();
    }
    widgets::Timeline<AlarmsEntry> timeline() {
        widgets::Timeline<AlarmsEntry> result;
        AlarmsProvider{}.getTimeline({.isPreview = true}, [&](auto answer) {
            ++completions;
            result = std::move(answer);
        });
        return result;
    }
};

const AlarmsDisplay unavailable{AlarmsDisplay::Unavailable{}};

TEST(AlarmsProvider, HasTheSampleForAPlaceholderWithoutReading) {
    Host host;
    host.container.put("alarms", exampleAlarms);
    const AlarmsEntry first = AlarmsProvider{}.placeholder({});
    EXPECT_EQ(first.date, exampleNow);
    const auto& sample = *first.display.watching();
    EXPECT_EQ(foundation::toJSON(AlarmsDisplay::Watching{
                  sample.firing, sample.watched, sample.paused, {}, sample.stale, sample.alarms}),
              R"({"firing":4,"watched":6,"paused":0,"updated":0,"stale":false,"alarms":[)"
              R"({"name":"api-5xx-rate-high","profile":"prod","region":"us-east-1",)"
              R"("updatedMs":null,"reason":"Threshold Crossed"},)"
              R"({"name":"orders-queue-age","profile":"prod","region":"eu-west-1",)"
              R"("updatedMs":null,"reason":"Threshold Crossed"},)"
              R"({"name":"ingest-lambda-errors","profile":"shared","region":"us-east-1",)"
              R"("updatedMs":null,"reason":"Threshold Crossed"}]})");
    EXPECT_EQ(AlarmsPreviewData::now() - sample.updated, 40);

    host.time += 1000;
    const AlarmsEntry later = AlarmsProvider{}.placeholder({.isPreview = true});
    EXPECT_EQ(later.date, exampleNow + 1000);
    EXPECT_EQ(later.display, first.display);
    EXPECT_EQ(host.reads, 0);
}

TEST(AlarmsProvider, GivesASnapshotOfTheFileOrInAPreviewTheSample) {
    Host host;
    for (const char* file : {"", exampleAlarms, "{", exampleAlarms}) {
        host.container.put("alarms", file);
        const auto real = snapshot::SnapshotStore::loadAlarms();
        for (const bool preview : {true, false}) {
            host.reads = host.completions = 0;
            const AlarmsEntry entry = host.snapshot(preview);
            EXPECT_EQ(entry.date, exampleNow);
            EXPECT_EQ(entry.display, !real && preview ? AlarmsPreviewData::firing()
                                                      : (AlarmsDisplay{real, exampleNow}));
            EXPECT_EQ(host.reads, 1);
            EXPECT_EQ(host.completions, 1);
        }
    }
    EXPECT_EQ(host.snapshot(false).display.watching()->firing, 4);

    // The date is read after the display, of which the age is exactly the limit.
    host.time = exampleUpdated.seconds + 180;
    host.tick = 1;
    const AlarmsEntry entry = host.snapshot(false);
    EXPECT_FALSE(entry.display.watching()->stale);
    EXPECT_EQ(entry.date, exampleUpdated + 181);
}

TEST(AlarmsProvider, GivesFiveMinutesOfEntriesEachJudgedAtItsOwnDate) {
    Host host;
    host.tick = 7;
    for (const double age : {0, 59, 60, 61, 119, 120, 170, 180, 181}) {
        host.container.put("alarms", exampleAlarms);
        host.reads = host.completions = 0;
        host.time = exampleUpdated.seconds + age;
        const auto real = snapshot::SnapshotStore::loadAlarms();
        const auto timeline = host.timeline();
        EXPECT_EQ(timeline.policy, widgets::ReloadPolicy{exampleUpdated + (age + 300)});
        ASSERT_EQ(timeline.entries.size(), 5);
        for (int i = 0; i < 5; ++i) {
            const AlarmsEntry& entry = timeline.entries[static_cast<std::size_t>(i)];
            EXPECT_EQ(entry.date, exampleUpdated + (age + 60 * i));
            EXPECT_EQ(entry.display, (AlarmsDisplay{real, entry.date}));
            EXPECT_EQ(entry.display.watching()->stale, age + 60 * i > 180) << age << ", " << i;
        }
        EXPECT_EQ(host.reads, 2) << "one of them the test's own";
        EXPECT_EQ(host.completions, 1);
    }
    host.container.put("alarms", "");
    for (const AlarmsEntry& entry : host.timeline().entries) EXPECT_EQ(entry.display, unavailable);
    EXPECT_EQ(host.timeline().entries.size(), 5);
    EXPECT_TRUE(host.timeline().policy);
}

}  // namespace
}  // namespace tessary::alarms
