// Runs of the built program, as a shell makes them.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "support/container.h"

namespace tessary {

class Program : public testing::Test {
protected:
    Program() { container_.put("alarms", exampleAlarms); }

    /// Runs the program with these words of the shell, in an environment of these variables alone,
    /// and returns its status. $C is the container, $ASK asks for the example at its own time.
    int run(const std::string& words, const std::string& variables = "") {
        const int status = std::system(
            ("C=" + folder_ +
             "; ASK=\"--container $C --at 1731772840\"; env -i TZ=UTC XDG_DATA_HOME=" + folder_ +
             "/data " + variables + " " + TESSARY_PROGRAM + " >" + folder_ + "/out 2>" + folder_ +
             "/err " + words)
                .c_str());
        out_ = contents(container_ / "out");
        err_ = contents(container_ / "err");
        return WEXITSTATUS(status);
    }
    /// What it prints.
    std::string output(const std::string& words, const std::string& variables = "") {
        EXPECT_EQ(run(words, variables), 0) << words << ": " << err_;
        return out_;
    }
    /// What it prints, without the white space that JSON is laid out with.
    std::string compact(const std::string& words) {
        return replaced(replaced(replaced(output(words), "\n", ""), "  ", ""), "\": ", "\":");
    }

    Container container_{};
    std::string folder_ = (container_ / "").parent_path();
    std::string out_{}, err_{};
};

}  // namespace tessary
