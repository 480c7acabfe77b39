#include "platform/foundation/json_writing.h"

#include <cmath>
#include <gtest/gtest.h>

#include "platform/foundation/json_sample.h"

namespace tessary::foundation {

using namespace std::string_literals;

enum class Size { small, medium };
template <>
inline constexpr auto namesOf<Size> = NamedCases<Size, 3>{
    {{Size::small, "small"}, {Size::medium, "medium"}, {Size::medium, "middle"}}};

/// An enumeration whose cases carry values.
struct Display {
    std::variant<std::monostate, Inner> payload{};
};
static void writeJSON(JSONWriter& json, const Display& display) {
    json.object([&] {
        const auto* const inner = std::get_if<Inner>(&display.payload);
        json.member("case", inner ? "shown" : "empty");
        if (inner) json.members(*inner);
    });
}

TEST(JSONWriting, PrintsEveryKindOfValue) {
    JSONWriter json;
    json.array([&] {
        json.value(true).value(INT64_MIN).value(UINT64_MAX).value(std::uint8_t{7}).null();
        json.value(300.0).value(0.1).value(-0.0).value(123456789012345683968.0).value(1e21);
        json.value(0.000001).value(0.0000001).value(-INFINITY).value(Date{1731772840.5});
        json.value("a\"\\/\b\f\n\r\t\x01\x1F\x7F").value("\0é😀"s).value("a\xFFz\xE2\x82");
        json.value(std::vector<std::optional<Size>>{Size::medium, {}}).value(Inner{300, 1.5});
        json.value(std::vector<Display>{{}, {Inner{1, 2}}}).value(Display{}.payload);
    });
    EXPECT_EQ(json.text(),
              "[true,-9223372036854775808,18446744073709551615,7,null,"
              "300,0.1,-0,123456789012345683968,1e+21,0.000001,1e-07,null,1731772840.5,"
              R"("a\"\\/\b\f\n\r\t\u0001\u001f)"
              "\x7F\",\"\\u0000é😀\",\"a\uFFFDz\uFFFD\uFFFD\","
              R"(["medium",null],{"t":300,"v":1.5},)"
              R"([{"case":"empty"},{"case":"shown","t":1,"v":2}],null])");
    EXPECT_EQ(parse<Size>("middle"), Size::medium);
    EXPECT_EQ(knownNames<Size>(), "small, medium, middle");
    EXPECT_EQ(choices<Size>(), "small or middle");
}

TEST(JSONWriting, IndentsByTwo) {
    JSONWriter json{JSONWriter::Style::indented};
    json.object([&] {
        json.key("a").array([&] { json.value("[").object([] {}); });
        json.member("b", std::vector<int>{}).member("c", Inner{1, 2});
    });
    EXPECT_EQ(json.text(),
              "{\n  \"a\": [\n    \"[\",\n    {}\n  ],\n  \"b\": [],\n"
              "  \"c\": {\n    \"t\": 1,\n    \"v\": 2\n  }\n}");
}

}  // namespace tessary::foundation
