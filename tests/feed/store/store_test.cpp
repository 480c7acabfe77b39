#include "feed/store/store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/fixtures.h"

namespace tessary::store {
namespace {

TEST(Store, IsOfOneFeedAndTheUserAlone) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(0077);
    {
        const auto store = Store::open(folder / "container", folder / "state/feed.json");
        ASSERT_TRUE(store) << store.fault().message();
        const auto second = Store::open(folder / "container", folder / "other.json");
        ASSERT_FALSE(second);
        EXPECT_EQ(second.fault().message(),
                  "another feed writes to " + (folder / "container/widgets").string());
        const snapshot::AlarmsSnapshot alarms{.schemaVersion = 1, .state = "off"};
        ASSERT_TRUE(store->write(alarms));
        const auto file = contents(folder / "container/widgets/alarms.json");
        EXPECT_EQ(foundation::decodeJSON<snapshot::AlarmsSnapshot>(file).value(), alarms);
        const Memory memory{
            .targets = {{.profile = "p", .answeredMs = 7, .alarms = {{.name = "a"}}}},
            .said = {{.profile = "p", .firing = {{"a"}}}}};
        ASSERT_TRUE(store->remember(memory));
        EXPECT_EQ(remembered(folder / "state/feed.json"), memory);
        for (const char* made :
             {"container/widgets/alarms.json", "container/widgets", "state/feed.json", "state"}) {
            struct stat status {};
            ASSERT_EQ(::stat((folder / made).c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 0077U, 0U) << made;
        }
    }
    EXPECT_TRUE(Store::open(folder / "container", folder / "state/feed.json"));
    ::umask(before);
}

TEST(Store, RemembersNothingOfAFileThatIsNone) {
    const TemporaryFolder folder;
    EXPECT_EQ(remembered(folder / "none.json"), Memory{});
    EXPECT_EQ(remembered(folder.write("broken.json", "{\"targets\": [3]}")), Memory{});
    const auto store = Store::open(folder.write("file", ""), folder / "x");
    EXPECT_FALSE(store);
}

}  // namespace
}  // namespace tessary::store
