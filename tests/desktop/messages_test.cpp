#include "desktop/messages.h"

#include <gtest/gtest.h>

namespace tessary::desktop {
namespace {

// Two entries that look alike, and a third; the pictures are as short as a PNG's signature.
const std::string timeline =
    R"({"id":4,"entries":[{"date":100,"url":"tessary://a","text":"one","picture":"iVBORwE="},)"
    R"({"date":160.5,"url":null,"text":"two","picture":"iVBORwE="},)"
    R"({"date":220,"url":null,"text":"three","picture":"iVBORwI="}],"policy":{"after":400}})";

TEST(Messages, RequestsNameWhatTheyAreFor) {
    EXPECT_EQ(encode({.request = "list"}, 1), "{\"id\":1,\"request\":\"list\"}\n");
    EXPECT_EQ(encode({.request = "timeline",
                      .widget = "metric",
                      .pin = "a \"b\"\n",
                      .family = "small",
                      .scale = 2,
                      .redacted = true},
                     2),
              R"({"id":2,"request":"timeline","widget":"metric","pin":"a \"b\"\n",)"
              R"("family":"small","scale":2,"redacted":true})"
              "\n");
}

TEST(Messages, ATimelineSharesThePicturesThatAreTheSame) {
    const auto reply = decodeReply(timeline);
    ASSERT_TRUE(reply && reply->timeline);
    EXPECT_EQ(reply->id, 4);
    EXPECT_EQ(reply->timeline->after, 400);
    const auto& entries = reply->timeline->entries;
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].url, "tessary://a");
    EXPECT_EQ(entries[1].url, std::nullopt);
    EXPECT_EQ(entries[1].date, 160.5);
    EXPECT_EQ(entries[2].text, "three");
    EXPECT_EQ(*entries[0].picture, "\x89PNG\1");
    EXPECT_EQ(entries[0].picture, entries[1].picture);
    EXPECT_NE(entries[1].picture, entries[2].picture);
}

TEST(Messages, OtherRepliesAreErrorsAndKinds) {
    EXPECT_EQ(decodeReply(R"({"id":1,"error":"no"})")->error, "no");
    const auto list = decodeReply(R"({"id":1,"widgets":[{"kind":"k","displayName":"n"}]})");
    ASSERT_EQ(list->kinds.size(), 1u);
    EXPECT_EQ(list->kinds[0].kind + list->kinds[0].displayName, "kn");
}

TEST(Messages, AnythingElseIsNoReply) {
    for (const char* line :
         {"", "null", "[]", "{}", "{\"id\":1}", "{\"id\":\"1\",\"error\":\"no\"}",
          "{\"id\":1,\"error\":7}", "{\"id\":1,\"widgets\":[{}]}", "{\"id\":1,\"widgets\":[3]}",
          "Segmentation fault"})
        EXPECT_FALSE(decodeReply(line)) << line;
    const std::pair<const char*, const char*> faults[] = {
        {"iVBORwI=", "AAAA"}, {"iVBORwI=", ""},     {"null", "7"},
        {"220", "\"220\""},   {"\"url\"", "\"u\""}, {"{\"after\":400}", "null"},
        {"\"three\"", "3"},   {"400", "\"400\""},
    };
    for (auto [from, to] : faults) {
        auto bad = timeline;
        bad.replace(bad.rfind(from), std::string{from}.size(), to);
        EXPECT_FALSE(decodeReply(bad)) << from << " as " << to;
    }
}

}  // namespace
}  // namespace tessary::desktop
