#include "desktop/client/messages.h"

#include <gtest/gtest.h>

#include "platform/foundation/json_writing.h"

namespace tessary::client {
namespace {

using foundation::toJSON;

protocol::Reply<protocol::Timeline> timeline(std::optional<protocol::Policy> policy = {{400}}) {
    // Two entries that look alike, and a third; the pictures are as short as a PNG's signature.
    return {{.request = "timeline",
             .entries = {{100, {}, "tessary://a", "one", {"\x89PNG\1"}},
                         {160.5, {}, std::nullopt, "two", {"\x89PNG\1"}},
                         {220, {}, std::nullopt, "three", {"\x89PNG\2"}}},
             .policy = policy},
            4};
}

TEST(Messages, ATimelineSharesThePicturesThatAreTheSame) {
    const auto reply = decodeReply(toJSON(timeline()), {.request = "timeline"});
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
    auto snapshot = timeline(std::nullopt);
    EXPECT_FALSE(decodeReply(toJSON(snapshot), {.request = "timeline"}));
    snapshot.request = "snapshot";
    const auto reply = decodeReply(toJSON(snapshot), {.request = "snapshot"});
    ASSERT_TRUE(reply && reply->timeline);
    EXPECT_EQ(reply->timeline->after, std::numeric_limits<double>::infinity());
}

TEST(Messages, OtherRepliesAreErrorsKindsAndPins) {
    for (const char* request : {"list", "pins", "timeline"})
        EXPECT_EQ(decodeReply(R"({"id":1,"error":"no"})", {.request = request})->error, "no");
    std::vector<protocol::Widget> kinds{{.kind = "k", .sizes = {{"f", "n", 1, 10'000}}}};
    const auto listed = [&] {
        return decodeReply(toJSON(protocol::Reply<protocol::List>{{"b", kinds}, 1}),
                           {.request = "list"});
    };
    EXPECT_EQ(listed()->kinds, kinds);
    kinds[0].sizes[0].width = 0;
    EXPECT_EQ(listed().fault().message(), "a widget of no size");
    kinds[0].sizes.clear();
    EXPECT_FALSE(listed());
    const Pin a{"", "a", ""}, b{"b", "", "d"};
    const auto pins = toJSON(protocol::Reply<protocol::Suggestions>{{"Pin", a, {a, b}}, 2});
    EXPECT_EQ(decodeReply(pins, {.request = "pins"})->pins,
              (protocol::Suggestions{"Pin", a, {a, b}}));
    const auto asked = toJSON(protocol::Reply<protocol::Entities>{{"Pin", {b}}, 2});
    EXPECT_EQ(decodeReply(asked, {.request = "pins", .ids = {{"b"}}})->pins,
              (protocol::Suggestions{"Pin", {}, {b}}));
    EXPECT_FALSE(decodeReply(asked, {.request = "pins"}));
}

TEST(Messages, AnythingElseIsNoReply) {
    const auto fault = [](const std::string& line) {
        return decodeReply(line, {.request = "timeline"}).fault().message();
    };
    const auto with = [](const std::string& display) {
        auto reply = timeline();
        reply.entries[0].display.write = [&](auto& json) { json.value("display"); };
        auto line = toJSON(reply);
        return line.replace(line.find("\"display\"", line.find("\"display\"") + 1), 9, display);
    };
    const auto lists = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_EQ(fault("Segmentation fault"), "expected a JSON value, found Segmentation");
    EXPECT_EQ(fault(R"({"id":"1","error":"no"})"), "/kind: expected a text, found nothing");
    auto other = timeline();
    other.id = "4";
    EXPECT_EQ(fault(toJSON(other)), "an id that is none of the desktop's");
    other = timeline();
    other.entries[2].picture.value = "GIF";
    EXPECT_EQ(fault(toJSON(other)), "a picture that is no PNG");
    // What passes a limit, and what only just does not.
    const auto& limits = protocol::replyLimits;
    EXPECT_TRUE(decodeReply(with(lists(limits.depth - 3)), {.request = "timeline"}));
    EXPECT_EQ(fault(with(lists(limits.depth - 2))),
              "/entries/0/display: expected nesting at most 64 deep, found more");
    EXPECT_EQ(fault(std::string(limits.bytes + 1, ' ')),
              "expected at most 268435456 bytes, found more");
}

}  // namespace
}  // namespace tessary::client
