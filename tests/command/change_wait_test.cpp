#include "command/change_wait.h"

#include <csignal>
#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::command {
namespace {

TEST(ChangeWait, EndsAtAChangeOrTheFirstSignal) {
    const TemporaryFolder root;
    for (const int signal : {SIGINT, SIGTERM}) {
        heedEndSignals();
        system::PathWatch watch{{root / "b"}};
        root.write("unrelated", "");
        root.write("b", "");
        EXPECT_EQ(waitForChange(watch), Woken::change);
        std::raise(signal);
        EXPECT_EQ(waitForChange(watch), Woken::end);
    }
}

}  // namespace
}  // namespace tessary::command
