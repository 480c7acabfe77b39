// What is made of one text: a case is what is asked, and the text.
#include <gtest/gtest.h>

#include "platform/foundation/base64.h"
#include "platform/foundation/date.h"
#include "platform/foundation/json_numbers.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/visible_text.h"
#include "support/golden.h"

namespace tessary::foundation {

static std::string answered(const std::string& line) {
    const auto blank = line.find(' ');
    const auto asked = line.substr(0, blank), text = unescaped(line.substr(blank + 1));
    const auto orNone = [](const auto& number) {
        return number ? std::to_string(*number) : "none";
    };
    if (asked == "base64") return base64(text);
    if (asked == "bytes") return decodeBase64(text).value_or("none");
    if (asked == "percent") return percentEncoded(text);
    if (asked == "part") return percentDecoded(text).value_or("none");
    if (asked == "visible") return visible(text);
    if (asked == "meant")
        return didYouMean(text.substr(0, text.find(' ')), words(text.substr(text.find(' '))));
    if (asked == "integer") return orNone(asInteger(readNumber(text).value()));
    const auto date = Date::parse(text);
    return orNone(date ? std::optional{date->seconds} : std::nullopt);
}

TEST(Texts, AreReadAndWritten) { expectTranscript("texts.txt", answered); }

TEST(Base64, BringsBackEveryByteAtEveryPlace) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    bytes += std::string{bytes.rbegin(), bytes.rend()} + "\xFF";
    for (std::size_t length = 0; length <= bytes.size(); ++length)
        EXPECT_EQ(decodeBase64(base64(bytes.substr(0, length))), bytes.substr(0, length));
}

TEST(VisibleText, IsCutToItsCells) {
    const std::string mixed = "a日本bé\tc日";  // 11 cells
    for (std::size_t most = 1; most < 13; ++most) {
        std::size_t cells = 0;
        const std::string cut = visible(mixed, most);
        EXPECT_EQ(cut == visible(mixed), most >= 11) << most;
        for (std::string_view rest = cut; !rest.empty();
             rest.remove_prefix(firstVisible(rest).length))
            cells += static_cast<std::size_t>(firstVisible(rest).cells);
        EXPECT_LE(cells, most);
    }
}

}  // namespace tessary::foundation
