#include "desktop/command.h"

#include <gtest/gtest.h>

#include "desktop/places/sample_kinds.h"
#include "support/golden.h"

namespace tessary::desktop {

using namespace places;
namespace {

// Each call works on what those before it left.
TEST(Command, CarriesOutOneAfterTheOtherOrNamesTheWordAtFault) {
    std::vector<PlacedWidget> widgets;
    expectTranscript("calls.txt", [&](const std::string& line) {
        const auto call = parseCall(words(unescaped(line)), "/");
        if (!call) return "fault: " + call.fault().message();
        const auto outcome = carryOut(*call, widgets, {{.area = {1280, 720}}}, sampleKinds);
        return outcome.status == 0 ? outcome.output : "! " + outcome.complaint;
    });
    EXPECT_EQ(parseCall({"--add", "alarm", "--pin", "\xff"}, "/").fault().message(),
              "--pin: '\xEF\xBF\xBD' is not UTF-8");
}

TEST(Command, TakesPathsFromTheCallersFolder) {
    const auto call = parseCall({"--container", "a/../b", "--info=/i"}, "/home/ana");
    EXPECT_EQ(call->action, Action::start);
    EXPECT_EQ(call->container, "/home/ana/b");
    EXPECT_EQ(call->info, "/i");
}

}  // namespace
}  // namespace tessary::desktop
