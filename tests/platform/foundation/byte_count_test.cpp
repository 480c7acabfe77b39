#include <gtest/gtest.h>

#include "platform/foundation/user_locale.h"
#include "support/golden.h"

namespace tessary::foundation {

TEST(ByteCount, IsWrittenAsTheLocaleDoes) {
    expectTranscript("byte_counts.txt", [](const std::string& line) {
        const auto asked = words(line);
        return UserLocale{asked.at(0)}.byteCount(std::stoll(asked.at(1)));
    });
}

}  // namespace tessary::foundation
