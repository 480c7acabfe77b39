#include <gtest/gtest.h>

#include "platform/locale/user_locale.h"
#include "support/golden.h"

namespace tessary::locale {

TEST(ByteCount, IsWrittenAsTheLocaleDoes) {
    expectTranscript("byte_counts.txt", [](const std::string& line) {
        const auto asked = words(line);
        return UserLocale{asked.at(0)}.byteCount(std::stoll(asked.at(1)));
    });
}

}  // namespace tessary::locale
