#include "command/program.h"

#include <gmock/gmock.h>

#include "support/golden.h"

namespace tessary {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Program, SaysByItsStatusWhoseFaultItWas) {
    for (const auto* file : {"alarm-pins", "metrics"}) container_.put(file, examplePins({"a"}));
    expectTranscript("statuses.txt", [&](const std::string& words) {
        const int status = run(words);
        EXPECT_EQ(out_.empty(), status != 0) << words;
        return std::to_string(status) + ' ' + replaced(err_, folder_, "$C");
    });
}

TEST_F(Program, KeepsPicturesFromATerminal) {
    for (const auto& [words, expected] : pairs("png=2 svg=2 pdf=2 json=0 text=0")) {
        const auto call = std::string{"script -qec '"} + TESSARY_PROGRAM +
                          " render alarms --container /nowhere --format " + words + "' /dev/null";
        const int status = std::system((call + " </dev/null >" + folder_ + "/log").c_str());
        EXPECT_EQ(std::to_string(WEXITSTATUS(status)), expected) << words;
        EXPECT_THAT(contents(container_ / "log"),
                    HasSubstr(expected == "0" ? "firing" : "--output"));
    }
}

TEST_F(Program, PrintsTheBundleAndTimelines) {
    expectTranscript("prints.txt", [&](const std::string& words) { return output(words); });
}

TEST_F(Program, RendersTheSameBytesTwiceInEachFormat) {
    for (const auto& [ending, start] : pairs("png=\x89PNG svg=< pdf=%PDF- json={ txt=Alarms")) {
        for (const std::string family : {"systemSmall", "systemMedium"}) {
            const auto words = "render alarms $ASK --family " + family;
            output(words + " -o $C/a." + ending);
            const std::string bytes = contents(container_ / ("a." + ending));
            EXPECT_THAT(bytes, StartsWith(start));
            const auto format = words + " --format " + (ending == "txt" ? "text" : ending);
            EXPECT_EQ(output(format), bytes) << ending;
            EXPECT_NE(output(format + " --redacted"), bytes) << ending;
            EXPECT_NE(output(format + " --entry 4"), bytes) << ending;
        }
    }
    const std::string whole = contents(container_ / "a.png");
    EXPECT_EQ(run("render alarms $ASK -o $C/a.png", "/usr/bin/prlimit --fsize=4096"), 1);
    EXPECT_EQ(contents(container_ / "a.png"), whole);
    const std::string parse = "import sys, xml.dom.minidom as dom; dom.parse(sys.argv[1])";
    EXPECT_EQ(std::system(("python3 -c '" + parse + "' " + folder_ + "/a.svg").c_str()), 0);
}

/// The clock, a large number in words, and the zone. Of none of these locales has the machine
/// generated any data.
TEST_F(Program, SpeaksTheEnvironmentsLanguageAtItsTime) {
    expectTranscript("languages.txt", [&](const std::string& variables) {
        std::string said;
        for (const std::string words :
             {"render metric --preview --request snapshot --format text $ASK",
              "render alarms --format text --container $C --at 90000000000",
              "timeline alarms $ASK"}) {
            output(words, variables);
            said += out_.substr(out_.rfind('\n', out_.size() - 2) + 1);
        }
        return said + err_.substr(0, err_.starts_with("tessary-widgets: ") ? err_.find('\n') : 0);
    });
}

TEST_F(Program, FindsItsContainerThroughItsDictionary) {
    std::filesystem::create_directories(container_ / "data/group-containers/com.tessary.desktop");
    std::filesystem::rename(container_ / "widgets",
                            container_ / "data/group-containers/com.tessary.desktop/widgets");
    const std::string words = "render alarms --format text";
    EXPECT_THAT(output(words), HasSubstr("Paused · sign in"));
    EXPECT_THAT(output(words, "XDG_DATA_HOME=/nowhere"), HasSubstr("Not watching"));
}

/// Each line is waited for, so that the signal comes when both have been said.
TEST_F(Program, ChecksAgainWhenAFileChanges) {
    ASSERT_EQ(std::system(("mkfifo " + folder_ + "/said").c_str()), 0);
    EXPECT_EQ(run("check --watch --json --container $C >$C/said & exec 3<$C/said; read -r one <&3; "
                  "rm $C/widgets/alarms.json; read -r two <&3; "
                  "echo \"$one\" >$C/one; echo \"$two\" >$C/two; kill -TERM $!; wait $!"),
              1);
    EXPECT_THAT(contents(container_ / "one"), HasSubstr(R"("step":"usable","problem":null)"));
    EXPECT_THAT(contents(container_ / "two"), testing::Not(HasSubstr(R"("step":"usable")")));
    EXPECT_EQ(err_, "");
}

}  // namespace
}  // namespace tessary
