// Records read from JSON and printed again, and what is no JSON.
#include <cmath>
#include <gtest/gtest.h>

#include "platform/foundation/json_decoding.h"
#include "platform/foundation/json_writing.h"
#include "support/fixtures.h"
#include "support/golden.h"

namespace tessary::foundation {

using namespace std::string_literals;

const std::string document =
    R"({"count":-3,"flag":true,"name":"n\u00e9\ud83d\ude00","list":[{"t":1,"v":2},)"
    R"({"v":3e0,"t":4}],"when":null,"last":{"t":5,"v":6,"x":[{}]},"a/b~c":["x",""]})";

struct Inner {
    std::int64_t t{};
    double v{};
};
template <>
inline constexpr auto fieldsOf<Inner> = std::tuple{Field{"t", &Inner::t}, Field{"v", &Inner::v}};

/// A record with a member of every kind.
struct Outer {
    std::int64_t count{};
    bool flag{};
    std::string name{};
    std::vector<Inner> list{{7, 7}};  ///< a default, which goes
    std::optional<std::int64_t> when{};
    std::optional<Inner> last{};
    std::optional<std::vector<std::string>> tags{};
};
template <>
inline constexpr auto fieldsOf<Outer> = std::tuple{
    Field{"count", &Outer::count}, Field{"flag", &Outer::flag}, Field{"name", &Outer::name},
    Field{"list", &Outer::list},   Field{"when", &Outer::when}, Field{"last", &Outer::last},
    Field{"a/b~c", &Outer::tags}};

/// A record whose keys are mostly unknown.
struct Sparse {
    std::optional<std::string> s{};
};
template <>
inline constexpr auto fieldsOf<Sparse> = std::tuple{Field{"s", &Sparse::s}};

/// A record with what a protocol needs beside.
struct Message {
    std::variant<std::monostate, std::int64_t, std::string> id{};
    AnyJSON display{};
    Bytes picture{};
    std::optional<std::string> url{};
    std::optional<std::string> note{};
    using Figure = std::variant<std::monostate, double, std::string>;
    std::optional<std::vector<Figure>> figures{};
    std::optional<std::map<std::string, Figure>> named{};
};
template <>
inline constexpr auto fieldsOf<Message> =
    std::tuple{Field{"id", &Message::id},
               Field{"display", &Message::display},
               Field{"picture", &Message::picture},
               Field{"url", &Message::url, Key::always},
               Field{"note", &Message::note, Key::ifPresent},
               Field{"figures", &Message::figures, Key::ifPresent},
               Field{"named", &Message::named, Key::ifPresent}};

/// The document with one part replaced.
static std::string with(std::string_view part, std::string_view replacement) {
    auto text = document;
    return text.replace(text.find(part), part.size(), replacement);
}

static std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

template <class Record>
static std::string readAndPrinted(const std::string& text) {
    auto record = decodeJSON<Record>(text);
    if (!record) return record.fault().message() + " at " + text.substr(record.fault().offset, 9);
    if constexpr (std::is_same_v<Record, Message>)
        record->display.write = [](JSONWriter& json) { json.value("shown"); };
    return toJSON(*record);
}

TEST(JSONDecoding, BringsBackWhatCanBePrintedOrExplainsTheFault) {
    expectTranscript("records.txt", [](const std::string& line) {
        const auto text = unescaped(line.substr(line.find(' ') + 1));
        if (line.starts_with("sparse")) return readAndPrinted<Sparse>(text);
        if (line.starts_with("message")) return readAndPrinted<Message>(text);
        if (line.starts_with("outer")) return readAndPrinted<Outer>(text);
        const auto bar = text.find(" | ");
        return readAndPrinted<Outer>(with(text.substr(0, bar), text.substr(bar + 3)));
    });
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

TEST(JSONDecoding, KeepsToTheLimitsOfItsCaller) {
    const auto at = [](const Limits& limits) {
        const auto result = decodeJSON<Outer>(document, limits);
        return result ? "" : result.fault().message();
    };
    EXPECT_EQ(at({.bytes = document.size(), .depth = 4, .values = 20}), "");
    const auto size = std::to_string(document.size() - 1);
    EXPECT_EQ(at({.bytes = document.size() - 1}),
              "expected at most " + size + " bytes, found more");
    EXPECT_EQ(at({.depth = 3}), "/last/x: expected nesting at most 3 deep, found more");
    EXPECT_EQ(at({.values = 19}), "/a~1b~0c/1: expected at most 19 values, found more");
}

TEST(JSONDecoding, LimitsTheDepth) {
    for (const std::size_t depth : {511U, 512U, 100000U}) {
        const bool isTaken = depth < 512;
        EXPECT_EQ(bool(decodeJSON<Sparse>(R"({"x":)" + nested(depth) + "}")), isTaken) << depth;
        EXPECT_EQ(bool(decodeJSON<Outer>(with("[{}]", nested(depth - 1)))), isTaken) << depth;
    }
}
TEST(JSONWriting, PrintsEveryKindOfValue) {
    JSONWriter json;
    json.array([&] {
        json.value(true).value(INT64_MIN).value(UINT64_MAX).value(std::uint8_t{7}).null();
        json.value(300.0).value(0.1).value(-0.0).value(123456789012345683968.0).value(1e21);
        json.value(0.000001).value(0.0000001).value(-INFINITY).value(Date{1731772840.5});
        json.value("a\"\\/\b\f\n\r\t\x01\x1F\x7F").value("\0é😀"s).value("a\xFFz\xE2\x82");
    });
    EXPECT_EQ(json.text(),
              "[true,-9223372036854775808,18446744073709551615,7,null,"
              "300,0.1,-0,123456789012345683968,1e+21,0.000001,1e-07,null,1731772840.5,"
              R"("a\"\\/\b\f\n\r\t\u0001\u001f)"
              "\x7F\",\"\\u0000é😀\",\"a\uFFFDz\uFFFD\uFFFD\"]");
}

}  // namespace tessary::foundation
