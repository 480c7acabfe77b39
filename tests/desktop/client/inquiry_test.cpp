#include "desktop/client/inquiry.h"

#include <gtest/gtest.h>

#include "desktop/main_loop.h"

namespace tessary::client {
namespace {

// Answers each question with its number.
constexpr const char* standIn =
    R"(while read -r line; do n=$((n + 1)); echo "{\"id\":$n,\"error\":\"$n\"}"; done)";

TEST(Inquiry, BeginsAnewOnceAllAnswersHaveCome) {
    Extension extension{{"/bin/sh", "-c", standIn}};
    std::string told;
    Inquiry inquiry{extension, [&] {
                        told += "begin ";
                        inquiry.ask({.request = "list"}, [&](const Reply& reply) {
                            told += *reply.error + " ";
                            inquiry.ask({.request = "list"},
                                        [&](const Reply& next) { told += *next.error + " "; });
                        });
                    }};
    for (int i = 0; i < 3; ++i) inquiry.start();
    bool over{};
    until([&] { return told.find('3') != std::string::npos; });
    inquiry.start();
    until([&] { return told.find('6') != std::string::npos; });
    extension.ask({.request = "list"}, [&](const Reply&) { over = true; });
    EXPECT_TRUE(until([&] { return over; }));
    EXPECT_EQ(told, "begin 1 2 begin 3 4 begin 5 6 ");
}

TEST(Inquiry, TellsNothingOnceItIsGone) {
    Extension extension{{"/bin/sh", "-c", standIn}};
    int told{};
    auto inquiry = std::make_unique<Inquiry>(extension, [] {});
    for (int i = 0; i < 3; ++i)
        inquiry->ask({.request = "list"}, [&](const Reply&) { ++told, inquiry.reset(); });
    bool over{};
    extension.ask({.request = "list"}, [&](const Reply&) { over = true; });
    EXPECT_TRUE(until([&] { return over; }));
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace tessary::client
