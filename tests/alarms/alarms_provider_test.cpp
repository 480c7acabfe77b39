#include "alarms/alarms_provider.h"

#include <gtest/gtest.h>

#include "snapshot/snapshot_store.h"
#include "support/container.h"

namespace tessary::alarms {
namespace {

using system::Surroundings;

/// A host whose clock goes on by `tick` each time it is asked, and that counts reads and answers.
struct Host {
    Container container{};
    double time{exampleNow.seconds};
    double tick{};
    int reads{};
    int answers{};
    system::ScopedSurroundings scope{surroundings()};

    Surroundings surroundings() {
        Surroundings result = container.surroundings();
        result.clock = [this] { return Date{std::exchange(time, time + tick)}; };
        result.container = [this](auto) { return ++reads, container / ""; };
        return result;
    }
    AlarmsEntry snapshot(bool preview) {
        std::optional<AlarmsEntry> result;
        const auto completion = [&](auto entry) { ++answers, result = std::move(entry); };
        AlarmsProvider{}.getSnapshot({.isPreview = preview}, completion);
        return result.value();
    }
    widgets::Timeline<AlarmsEntry> timeline() {
        widgets::Timeline<AlarmsEntry> result;
        const auto completion = [&](auto timeline) { ++answers, result = std::move(timeline); };
        AlarmsProvider{}.getTimeline({.isPreview = true}, completion);
        return result;
    }
};

TEST(AlarmsProvider, HasTheSampleForAPlaceholderWithoutReading) {
    Host host;
    host.container.put("alarms", exampleAlarms);
    const AlarmsEntry first = AlarmsProvider{}.placeholder({});
    EXPECT_EQ(first.date, exampleNow);
    const auto& sample = *first.display.watching();
    EXPECT_EQ(sample.updated, AlarmsPreviewData::now() - 40);
    EXPECT_TRUE(sample.firing == 4 && sample.watched == 6 && sample.paused == 0 && !sample.stale);
    auto alarms = foundation::decodeJSON<snapshot::AlarmsSnapshot>(exampleAlarms).value().topAlarms;
    for (Alarm& alarm : alarms) alarm.updatedMs.reset(), alarm.reason = "Threshold Crossed";
    EXPECT_EQ(sample.alarms, alarms);

    host.time += 1000;
    EXPECT_EQ(AlarmsProvider{}.placeholder({.isPreview = true}),
              (AlarmsEntry{exampleNow + 1000, first.display}));
    EXPECT_EQ(host.reads, 0);
}

TEST(AlarmsProvider, GivesASnapshotOfTheFileOrInAPreviewTheSample) {
    Host host;
    for (const char* file : {"", exampleAlarms, "{", exampleAlarms}) {
        host.container.put("alarms", file);
        const auto real = snapshot::SnapshotStore::loadAlarms();
        for (const bool preview : {true, false}) {
            const AlarmsDisplay display{real, exampleNow};
            const bool sampled = preview && !real;
            const AlarmsEntry entry{exampleNow, sampled ? AlarmsPreviewData::firing() : display};
            host.reads = host.answers = 0;
            EXPECT_EQ(host.snapshot(preview), entry);
            EXPECT_TRUE(host.reads == 1 && host.answers == 1);
        }
    }
    // The date is read after the display, whose age is exactly the limit.
    host.time = exampleUpdated.seconds + 180;
    host.tick = 1;
    const AlarmsEntry entry = host.snapshot(false);
    EXPECT_FALSE(entry.display.watching()->stale);
    EXPECT_EQ(entry.date, exampleUpdated + 181);
}

TEST(AlarmsProvider, GivesFiveMinutesOfEntriesEachJudgedAtItsOwnDate) {
    Host host;
    host.tick = 7;
    host.container.put("alarms", exampleAlarms);
    const auto real = snapshot::SnapshotStore::loadAlarms();
    host.reads = 0;
    host.time = exampleUpdated.seconds + 60;
    const auto timeline = host.timeline();
    EXPECT_TRUE(host.reads == 1 && host.answers == 1);
    EXPECT_EQ(timeline.policy, widgets::ReloadPolicy{exampleUpdated + 360});
    ASSERT_EQ(timeline.entries.size(), 5);
    for (int i = 0; i < 5; ++i) {
        const Date date = exampleUpdated + (60 + 60 * i);
        const AlarmsEntry& entry = timeline.entries[static_cast<std::size_t>(i)];
        EXPECT_EQ(entry, (AlarmsEntry{date, AlarmsDisplay{real, date}}));
        EXPECT_EQ(entry.display.watching()->stale, i > 2);
    }
}

}  // namespace
}  // namespace tessary::alarms
