#include "desktop/client/messages.h"

#include <gtest/gtest.h>

namespace tessary::client {

using namespace places;
namespace {

// Two entries that look alike, and a third; the pictures are as short as a PNG's signature.
const std::string timeline =
    R"({"id":4,"entries":[{"date":100,"url":"tessary://a","text":"one","picture":"iVBORwE="},)"
    R"({"date":160.5,"url":null,"text":"two","picture":"iVBORwE="},)"
    R"({"date":220,"url":null,"text":"three","picture":"iVBORwI="}],"policy":{"after":400}})";

const std::string kinds =
    R"({"id":1,"widgets":[{"kind":"k","configuration":"static","displayName":"n",)"
    R"("description":"d","families":["systemMedium","systemLarge","systemSmall"]},)"
    R"({"kind":"l","configuration":"intent","displayName":"","description":"","families":[]}]})";

const std::string pins =
    R"({"id":2,"type":"Pin","default":{"id":"","name":"a","detail":null},)"
    R"("suggested":[{"id":"","name":"a","detail":null},{"id":"b","name":"","detail":"d"}]})";

/// The text with the last of one thing in it made another.
std::string changed(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.rfind(from), from.size(), to);
}

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
    EXPECT_EQ(encode({.request = "pins", .widget = "alarm"}, 3),
              "{\"id\":3,\"request\":\"pins\",\"widget\":\"alarm\"}\n");
    EXPECT_EQ(encode({.request = "pins", .widget = "alarm", .ids = {"", "b"}}, 4),
              "{\"id\":4,\"request\":\"pins\",\"widget\":\"alarm\",\"ids\":[\"\",\"b\"]}\n");
    EXPECT_EQ(
        encode({.request = "snapshot", .widget = "a", .family = "medium", .preview = true}, 5),
        R"({"id":5,"request":"snapshot","widget":"a","family":"medium","scale":1,)"
        R"("redacted":false,"preview":true})"
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

TEST(Messages, ASnapshotIsATimelineThatNeverEnds) {
    const auto policy = R"({"after":400}})";
    EXPECT_FALSE(decodeReply(changed(timeline, policy, R"(null,"request":"timeline"})")));
    const auto reply = decodeReply(changed(timeline, policy, R"(null,"request":"snapshot"})"));
    ASSERT_TRUE(reply && reply->timeline);
    EXPECT_EQ(reply->timeline->after, std::numeric_limits<double>::infinity());
    EXPECT_EQ(reply->timeline->entries.size(), 3u);
}

TEST(Messages, OtherRepliesAreErrorsKindsAndPins) {
    EXPECT_EQ(decodeReply(R"({"id":1,"error":"no"})")->error, "no");
    const std::vector<WidgetKind> widgets{{"k", "n", "d", {Family::medium, Family::small}, false},
                                          {"l", "", "", {}, true}};
    EXPECT_EQ(decodeReply(kinds)->kinds, widgets);
    const Pin a{"", "a", ""}, b{"b", "", "d"};
    EXPECT_EQ(decodeReply(pins)->pins, (Pins{"Pin", a, {a, b}}));
    EXPECT_EQ(decodeReply(R"({"id":1,"type":"P","default":null,"suggested":[]})")->pins, Pins{"P"});
    const auto asked = R"({"id":1,"type":"P","entities":[{"id":"","name":"a","detail":""}]})";
    EXPECT_EQ(decodeReply(asked)->pins, (Pins{"P", {}, {a}}));
}

TEST(Messages, AnythingElseIsNoReply) {
    for (const char* line :
         {"", "null", "[]", "{}", "{\"id\":1}", "{\"id\":\"1\",\"error\":\"no\"}",
          "{\"id\":1,\"error\":7}", "{\"id\":1,\"widgets\":[{}]}", "{\"id\":1,\"widgets\":[3]}",
          "{\"id\":1,\"type\":\"P\"}", "{\"id\":1,\"type\":\"P\",\"entities\":[3]}",
          "{\"id\":1,\"type\":\"P\",\"suggested\":[]}", "Segmentation fault"})
        EXPECT_FALSE(decodeReply(line)) << line;
    const std::tuple<std::string, const char*, const char*> faults[] = {
        {timeline, "iVBORwI=", "AAAA"},
        {timeline, "iVBORwI=", ""},
        {timeline, "null", "7"},
        {timeline, "220", "\"220\""},
        {timeline, "\"url\"", "\"u\""},
        {timeline, "{\"after\":400}", "null"},
        {timeline, "\"three\"", "3"},
        {timeline, "400", "\"400\""},
        {kinds, "\"kind\"", "\"k\""},
        {kinds, "intent", "other"},
        {kinds, "\"displayName\"", "\"name\""},
        {kinds, "\"description\":\"\"", "\"description\":null"},
        {kinds, "[]", "[7]"},
        {kinds, "[]", "null"},
        {pins, "\"id\":\"b\"", "\"id\":7"},
        {pins, "\"name\":\"\"", "\"name\":null"},
        {pins, "\"detail\":\"d\"", "\"detail\":[]"},
        {pins, "\"default\"", "\"first\""},
        {pins, "\"Pin\"", "null"},
    };
    for (const auto& [good, from, to] : faults) {
        ASSERT_TRUE(decodeReply(good));
        EXPECT_FALSE(decodeReply(changed(good, from, to))) << from << " as " << to;
    }
}

}  // namespace
}  // namespace tessary::client
