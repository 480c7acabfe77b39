#include "desktop/client/inquiry.h"

#include <gtest/gtest.h>

#include "desktop/client/fake_extension.h"

namespace tessary::client {
namespace {

TEST(Inquiry, BeginsAnewOnceAllAnswersHaveCome) {
    FakeExtension extension;
    std::string told;
    Inquiry inquiry{extension, [&] {
                        told += "begin ";
                        inquiry.ask({.request = "list"}, [&](const Reply& reply) {
                            told += *reply.error + " ";
                            inquiry.ask({.request = "list"},
                                        [&](const Reply& next) { told += *next.error + " "; });
                        });
                    }};
    for (const auto& [answer, starts] :
         {std::pair{"", 3}, {"1", 0}, {"2", 0}, {"3", 0}, {"4", 1}, {"5", 1}, {"6", 0}}) {
        if (*answer) extension.answer({.error = answer});
        for (int i = 0; i < starts; ++i) inquiry.start();
    }
    EXPECT_EQ(told, "begin 1 2 begin 3 4 begin 5 6 begin ");
}

TEST(Inquiry, TellsNothingOnceItIsGone) {
    FakeExtension extension;
    int told{};
    auto inquiry = std::make_unique<Inquiry>(extension, [] {});
    for (int i = 0; i < 3; ++i)
        inquiry->ask({.request = "list"}, [&](const Reply&) { ++told, inquiry.reset(); });
    while (!extension.asked.empty()) extension.answer({});
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace tessary::client
