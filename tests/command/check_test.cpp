#include "command/check.h"

#include <gtest/gtest.h>

#include "command/check_report.h"
#include "support/container.h"
#include "support/golden.h"

namespace tessary::command {
namespace {

/// Three usable files, to be spoiled one by one.
class Check : public testing::Test {
protected:
    Check() { restore(); }
    void restore() const {
        carryOut("rm -rf * && mkdir widgets && cp $STORED/usable/* widgets");
        carryOut("echo '{\"TessaryAppGroup\":\"A1.com.tessary.desktop\"}' >info.json");
        container_.put("alarms", exampleAlarms);
    }
    /// By a shell, in the container.
    void carryOut(const std::string& command) const {
        const auto stored = std::filesystem::absolute(storedGolden("", __FILE__)).string();
        const auto call = "cd " + folder_ + " && STORED=" + stored + " && " + command;
        EXPECT_EQ(std::system(call.c_str()), 0) << command;
    }
    /// In the container that is given by hand, or in that of the group where a file "installed" is.
    Inspection foundAt(double seconds) const {
        carryOut("find . ! -type l -exec touch -d 2174-01-01Z {} +");
        snapshot::Source source = container_.source();
        if (std::filesystem::exists(container_ / "installed")) source.places.container.reset();
        source.places.dictionaries = {container_ / "info.json"};
        source.clock = [seconds] { return Date{seconds}; };
        return inspect(source);
    }
    Inspection found() const { return foundAt(exampleNow.seconds); }

    /// The status and what is said, of all files or of one; the container's folder as /c.
    std::string said(const Inspection& inspection, const std::string& of = "") const {
        const auto lines = foundation::JSONWriter::Style::indented;
        const std::string all = replaced(asText(inspection, {"en_US", "UTC"}) + "\n" +
                                             (of.empty() ? asJSON(inspection, lines) : ""),
                                         folder_, "/c/");
        const auto start = of.empty() ? 0 : all.find("\n" + of) + 1;
        const auto end = of.empty() ? all.size() : all.find("\n\n", start) + 1;
        return "status " + std::to_string(exitStatus(inspection)) + '\n' +
               all.substr(start, end - start);
    }

    Container container_{};
    std::string folder_ = container_ / "";
};

TEST_F(Check, FindsTheFirstFault) {
    expectTranscript("faults.txt", [&](const std::string& spoiling) {
        const auto bar = spoiling.find(" | ");
        std::string text = exampleAlarms;
        text.replace(text.find(spoiling.substr(0, bar)), bar, spoiling.substr(bar + 3));
        container_.put("alarms", text);
        return said(found(), "alarms.json");
    });
}

/// A case is the file that is told of, or "all", when, and what is done to the files before.
TEST_F(Check, SaysWhereTheWalkEndedAndWhatIsShown) {
    expectTranscript("inspections.txt", [&](const std::string& line) {
        double at = 0;
        std::string of, command;
        std::getline(std::istringstream{line} >> of >> at, command);
        restore();
        carryOut(command);
        return said(foundAt(at), of == "all" ? "" : of + ".json");
    });
}

TEST_F(Check, FindsTheSameUntilAFilesContentDiffers) {
    const Inspection first = found();
    EXPECT_TRUE(foundTheSame(first, foundAt(1731772841)));
    EXPECT_FALSE(foundTheSame(first, foundAt(1731772981)));
    carryOut("echo >>widgets/metrics.json");
    EXPECT_FALSE(foundTheSame(first, found()));
    restore();
    EXPECT_TRUE(foundTheSame(first, found()));
}

}  // namespace
}  // namespace tessary::command
