#include "platform/foundation/json_decoding.h"

#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"
#include "platform/foundation/json_sample.h"
#include "platform/foundation/json_writing.h"

namespace tessary::foundation {

using namespace std::string_literals;

const std::string document =
    R"({"count":-3,"flag":true,"name":"n\u00e9\ud83d\ude00","list":[{"t":1,"v":2},)"
    R"({"v":3e0,"t":4}],"when":null,"last":{"t":5,"v":6,"x":[{}]},"a/b~c":["x",""]})";
const Outer decoded{-3, true, "né😀", {{1, 2}, {4, 3}}, {}, Inner{5, 6}, {{"x", ""}}};

/// A record whose keys are mostly unknown.
struct Sparse {
    std::optional<std::string> s{};
};
template <>
inline constexpr auto fieldsOf<Sparse> = std::tuple{Field{"s", &Sparse::s}};

/// The document with one part replaced.
static std::string with(std::string_view part, std::string_view replacement) {
    auto text = document;
    return text.replace(text.find(part), part.size(), replacement);
}

static std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JSONDecoding, FillsEveryKindOfMember) {
    EXPECT_EQ(decodeJSON<Outer>(document).value(), decoded);
    const auto bare = R"( {"list":[],"name":"","flag":false,"count":2} )";
    EXPECT_EQ(decodeJSON<Outer>(bare).value(), Outer{.count = 2});
}

TEST(JSONDecoding, ChecksTheValuesThatNobodyAskedFor) {
    auto taken = words(R"(0 -0.5e+10 1e400 true null [] {} [1,[2,{"a":null}]] {"a":1,"a":2,"s":3}
        "\u0000" "\"\\\/\b\f\n\r\t\u00E9\uD83D\uDE00" "\uED95\u00ed")");
    taken.insert(taken.end(), {std::string(500, '7'), "-" + std::string(500, '7') + ".5E-9",
                               "\"\x7F\xF4\x8F\xBF\xBF\"", " \t\r\n1 \t\r\n", nested(505)});
    auto refused = words(R"(01 - +1 .5 1. 1e 1.5.3 1e5e3 0x1 NaN Infinity nul True 'a' [1,] [,1] [1
        {"a":1,} {"a"} {"a":} {a:1} {1:2} {"a":1] [1} /**/1 1// "a "\x" "\u12" "\u12G4" "\uD83D"
        "\uD83Dx" "\uD83D\n" "\uD83D\uD83D" "\uDE00" "\ud83d\ude00\ude00" {"\uDC00":1} {"\uDC00)");
    const auto bytes = words(
        "\xEF\xBB\xBF\x31 1\xC2\xA0 \"\x1F\" \"\xFF\" \"\xC3\" \"\xC0\x80\" \"\xED\xA0\x80\" "
        "\"\xF4\x90\x80\x80\" \"\xE2\x82");
    refused.insert(refused.end(), bytes.begin(), bytes.end());
    refused.insert(refused.end(), {"", "[1 2]", "{\"a\" 1}", "{\"a\":1 \"b\":2}", "\v1", "\"\n\"",
                                   "\"\t\"", "1\0"s, "\0"s, "\"a\0b\""s, nested(513)});
    const auto isTaken = [](std::string place, const std::string& value) {
        return bool(decodeJSON<Sparse>(place.replace(place.find('@'), 1, value)));
    };
    // As an unknown key's value, as a repeated key's, and below both.
    for (const char* place : {R"({"x":@})", R"({"s":"","s":@})", R"({"x":[0,{"y":@}],"s":""})"}) {
        for (const auto& value : taken) EXPECT_TRUE(isTaken(place, value)) << value;
        for (const auto& value : refused) EXPECT_FALSE(isTaken(place, value)) << value;
    }
}

TEST(JSONDecoding, TakesOneTextFromStartToEnd) {
    for (const auto& after : {"\0"s, "{}"s, ","s, "x"s, "\xEF\xBB\xBF"s, "1"s, "]"s})
        EXPECT_EQ(decodeJSON<Sparse>("{} " + after).fault().expected, "nothing after the value");
    // A view that ends inside a longer text.
    EXPECT_TRUE(decodeJSON<Sparse>(std::string_view{"{}}"}.substr(0, 2)));
    for (std::size_t length = 0; length < document.size(); ++length)
        ASSERT_FALSE(decodeJSON<Outer>(std::string_view{document}.substr(0, length))) << length;
}

TEST(JSONDecoding, LimitsTheDepth) {
    for (const std::size_t depth : {511U, 512U, 100000U}) {
        const bool isTaken = depth < 512;
        EXPECT_EQ(bool(decodeJSON<Sparse>(R"({"x":)" + nested(depth) + "}")), isTaken) << depth;
        EXPECT_EQ(bool(decodeJSON<Outer>(with("[{}]", nested(depth - 1)))), isTaken) << depth;
    }
}

TEST(JSONDecoding, TakesTheFirstOfARepeatedKey) {
    for (const auto& [text, value] : pairs(R"(
        {"s":"a","s":"b"}=a {"s":"a","s":null}=a {"s":"a","s":{"s":[1]},"s":7}=a {"\u0073":"a"}=a
        {"x":{"s":"b"},"s":"a"}=a {"s":null,"s":"b"}=- {"S":"a","":2}=- {"s\u0000":"b"}=-)"))
        EXPECT_EQ(decodeJSON<Sparse>(text).value().s.value_or("-"), value) << text;
    EXPECT_EQ(decodeJSON<Outer>(with("-3", R"(null,"count":1)")).fault().found, "null");
}

TEST(JSONDecoding, ExplainsAFault) {
    const std::string integer = "/count: expected a 64-bit integer, found ";
    const std::string sevens(40, '7');
    const std::pair<std::string, std::string> cases[] = {
        {with("-3", "300.5"), integer + "300.5"},
        {with("-3", sevens + "77"), integer + sevens + "…"},
        {with("-3", R"("\u0001\n3")"), integer + R"("\x01\x0A3")"},
        {with("\"count\":-3,", ""), integer + "nothing"},
        {with("3e0", "1e400"), "/list/1/v: expected a number within a double's range, found 1e400"},
        {with("true", "0"), "/flag: expected true or false, found 0"},
        {with("[{\"t\":1", "[{\"t\":[]"), "/list/0/t: expected a 64-bit integer, found a list"},
        {with(",\"t\":4", ""), "/list/1/t: expected a 64-bit integer, found nothing"},
        {with("{\"v\":3e0,\"t\":4}", "null"), "/list/1: expected an object, found null"},
        {with("[{}]", "[{]"), "/last/x: expected a key in quotes, found ]"},
        {with("null", "nil"), "/when: expected a JSON value, found nil"},
        {with("-3", "-03"), "/count: expected a JSON value, found -03"},
        {with("\"x\",", "\"x\" "), "/a~1b~0c/1: expected a comma or ], found \""},
        {with("-3", "-3;"), "/count: expected a comma or }, found ;"},
        {with("\\u00e9", "\\udc00"), "/name: expected a surrogate pair, found half of one"},
        {document + " \0x"s, "expected nothing after the value, found \\x00x"},
        {"[]", "expected an object, found a list"},
        {" ", "expected a JSON text, found the end of the text"}};
    for (const auto& [text, message] : cases)
        EXPECT_EQ(decodeJSON<Outer>(text).fault().message(), message);
    EXPECT_EQ(decodeJSON<Outer>(with("true", "0")).fault().offset, document.find("true"));
    EXPECT_EQ(decodeJSON<Outer>(with("null", "nil")).fault().offset, document.find("null"));
    EXPECT_EQ(decodeJSON<Outer>(with("-3", "1.")).fault().offset, document.find("-3"));
}

// Whatever one byte is replaced by, the text is refused, or means something that prints and decodes
// to the same again.
TEST(JSONDecoding, WithstandsDamage) {
    for (std::size_t at = 0; at < document.size(); ++at) {
        for (const char byte : "\"\\{}[]:,0-e.\n\xED\xFFu"s + '\0') {
            auto text = document;
            text[at] = byte;
            const auto result = decodeJSON<Outer>(text);
            const auto again = result ? decodeJSON<Outer>(toJSON(result.value())) : result;
            EXPECT_TRUE(result ? again.value() == result.value()
                               : result.fault().offset <= text.size());
        }
    }
}

}  // namespace tessary::foundation
