#include "feed/additions/additions.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

#include "support/golden.h"

namespace tessary::additions {
namespace {

using foundation::Fault;
using foundation::Result;

settings::AlarmPin alarm(const std::string& name, const std::string& label = "") {
    return settings::completed(
        settings::AlarmPin{.label = label, .profile = "p", .region = "r", .name = name});
}

/// Each change is made from what the one before has left, whoever makes them.
TEST(Additions, LoseNothingToEachOther) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(0077);
    const auto file = folder / "state/pins.json";
    constexpr int threads = 6, changes = 7;
    {
        std::vector<std::jthread> all;
        for (int thread = 0; thread < threads; ++thread)
            all.emplace_back([&, thread] {
                for (int i = 0; i < changes; ++i)
                    EXPECT_TRUE(change(file, [&](Additions& added) {
                        const auto name = std::to_string(thread) + "\n\"é" + std::to_string(i);
                        added.alarms.push_back(alarm(name));
                        added.metrics.push_back(settings::completed({.profile = "p",
                                                                     .region = "r",
                                                                     .namespace_ = "n",
                                                                     .name = name,
                                                                     .dimensions = {{"d", "v"}}}));
                        return Result<void>{};
                    }));
            });
    }
    ::umask(before);
    const auto kept = load(file).value();
    EXPECT_EQ(kept.alarms.size(), threads * changes);
    EXPECT_EQ(kept.metrics.size(), threads * changes);
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    const auto refused = change(file, [](Additions& added) {
        added.alarms.clear();
        return Result<void>{Fault{"no"}};
    });
    EXPECT_EQ(refused.fault().message(), "no");
    EXPECT_EQ(load(file).value(), kept);
}

/// A case is a file's text, with ' for ".
TEST(Additions, AreRefusedWhereTheSettingsWouldBe) {
    const TemporaryFolder folder;
    expectTranscript("additions.txt", [&](const std::string& line) -> std::string {
        const auto text = replaced(line, "'", "\"");
        const auto file = folder.write("pins.json", text);
        const auto changed = change(file, [](Additions& added) {
            added.watch.clear();
            return Result<void>{};
        });
        if (changed) return "fine";
        EXPECT_EQ(contents(file), text) << "it is lost";
        return replaced(changed.fault().message(), (folder / "").string(), "");
    });
}

TEST(Additions, StandBehindTheSettings) {
    const settings::Settings written{.watch = {{.profile = "p"}}, .alarms = {alarm("a", "own")}};
    const Additions added{.watch = {{.profile = "q", .regions = {"r"}}},
                          .alarms = {alarm("a", "other"), alarm("b"), alarm("b", "twice")}};
    const auto all = merged(written, added);
    EXPECT_EQ(all.alarms, (std::vector{alarm("a", "own"), alarm("b")}));
    EXPECT_EQ(all.watch, (std::vector{written.watch[0], added.watch[0]}));
    EXPECT_EQ(load("/no/such/file").value(), Additions{});
}

}  // namespace
}  // namespace tessary::additions
