#include "host/program.h"

#include <gmock/gmock.h>

#include "platform/foundation/json_decoding.h"
#include "shell/tessary_widgets.h"

namespace tessary {

/// What a test wants to know of a picture in JSON.
struct Drawing {
    std::string kind{};
    std::string family{};
    double date{};
    std::string url{};
    bool operator==(const Drawing&) const = default;
};
template <>
inline constexpr auto foundation::fieldsOf<Drawing> =
    std::tuple{Field{"kind", &Drawing::kind}, Field{"family", &Drawing::family},
               Field{"date", &Drawing::date}, Field{"url", &Drawing::url}};

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Program, SaysByItsStatusWhoseFaultItWas) {
    for (const auto& row : table(R"(
        0 | list
        0 | timeline alarms
        0 | timeline alarms --container /nowhere --info /nowhere
        0 | render com.tessary.desktop.widgets.alarms --format text
        0 | render alarms $ASK -o -
        0 | pins alarm --json
        0 | --help
        0 | --version
        0 | list --help
        0 | timeline --help
        0 | render --help
        0 | pins --help
        0 | list --version
        0 | timeline --version
        0 | render --version
        0 | pins --version
        0 | check --help
        0 | check --version
        1 | check --container $C >&-                   | standard output: Bad file descriptor
        1 | check --container $C --watch >/dev/full    | standard output: No space left on device
        1 | render alarms -o $C                        | Is a directory
        1 | render alarms -o $C/none/a.png             | none/a.png: No such file or directory
        1 | render alarms -o /dev/full                 | /dev/full: No space left on device
        1 | render alarms >/dev/full                   | standard output: No space left on device
        1 | list >&-                                   | standard output: Bad file descriptor
        1 | timeline alarms >&-                        | standard output: Bad file descriptor
        1 | render alarms --format svg >&-             | standard output: Bad file descriptor
        1 | --help >&-                                 | standard output: Bad file descriptor
        2 |                                            | no command
        2 | draw                                       | 'draw'
        2 | timeline list                              | 'list'
        2 | timeline Alarms                            | 'Alarms'
        2 | pins alarms                                | 'alarms'
        2 | render "`printf 'a\n\033b'`"              | 'a  b'
        2 | render alarms --entry 5                    | '5' is not the number of an entry, from 0 to 4
        2 | render alarms --request snapshot --entry 1 | from 0 to 0
        2 | render alarms --pin orders                 | 'alarms'
        2 | timeline alarms --at yesterday             | 'yesterday')")) {
        const int status = run(row.at(1));
        EXPECT_EQ(status, row.at(0).front() - '0') << row.at(1);
        EXPECT_EQ(out_.empty(), status != 0) << row.at(1);
        if (status == 0) {
            EXPECT_EQ(err_, "") << row.at(1);
            continue;
        }
        EXPECT_THAT(err_, AllOf(StartsWith("tessary-widgets: "), HasSubstr(row.at(2))));
        EXPECT_EQ(err_.find('\n'), err_.size() - 1) << err_;
    }
}

TEST_F(Program, KeepsPicturesFromATerminal) {
    for (const auto& [words, expected] : foundation::pairs("png=2 svg=2 pdf=2 json=0 text=0")) {
        const auto call = std::string{"script -qec '"} + TESSARY_PROGRAM +
                          " render alarms --container /nowhere --format " + words + "' /dev/null";
        const int status = std::system((call + " </dev/null >" + folder_ + "/log").c_str());
        EXPECT_EQ(std::to_string(WEXITSTATUS(status)), expected) << words;
        EXPECT_THAT(contents(container_ / "log"),
                    HasSubstr(expected == "0" ? "firing" : "--output"));
    }
}

TEST_F(Program, ListsTheBundle) {
    std::string widgets;
    for (const auto& widget : shell::TessaryWidgets{}.body()) {
        const std::string title = widget.intent ? '"' + widget.intent->title + '"' : "null";
        widgets += (widgets.empty() ? "" : ",") + (R"({"kind":")" + widget.kind) +
                   R"(","configuration":")" + (widget.intent ? "intent" : "static") +
                   R"(","intent":)" + title + R"(,"displayName":")" + widget.displayName +
                   R"(","description":")" + widget.text +
                   R"(","families":["systemSmall","systemMedium"]})";
        EXPECT_THAT(output("list"), AllOf(HasSubstr(widget.kind), HasSubstr(widget.displayName)));
    }
    EXPECT_EQ(compact("list --json"), R"({"bundle":"TessaryWidgets","widgets":[)" + widgets + "]}");
}

TEST_F(Program, PrintsTimelinesAsJSON) {
    const auto answer = [](const std::string& request, const std::string& entries) {
        return R"({"kind":"com.tessary.desktop.widgets.alarms","request":")" + request +
               R"(","entries":[)" + entries + R"(],"policy":)";
    };
    std::string none, some;
    for (const std::string date : {"2840", "2900", "2960", "3020", "3080"}) {
        const std::string start = R"({"date":173177)" + date;
        none += (none.empty() ? "" : ",") + start + R"(.5,"display":{"case":"unavailable"}})";
        some +=
            (some.empty() ? "" : ",") + start +
            R"(,"display":{"case":"watching","firing":4,"watched":3,"paused":1,)"
            R"("updated":1731772800,"stale":)" +
            (date > "2980" ? "true" : "false") +
            R"(,"alarms":[{"name":"api-5xx-rate-high","profile":"prod","region":"us-east-1",)"
            R"("updatedMs":1731772740000,"reason":"Threshold Crossed"},{"name":)"
            R"("orders-queue-age","profile":"prod","region":"eu-west-1","updatedMs":null,)"
            R"("reason":"Threshold Crossed"},{"name":"ingest-lambda-errors","profile":"shared",)"
            R"("region":"us-east-1","updatedMs":null,"reason":""}]}})";
    }
    EXPECT_EQ(compact("timeline alarms --container $C/none --at 1731772840.5 --json"),
              answer("timeline", none) + R"({"after":1731773140.5}})");
    EXPECT_EQ(compact("timeline alarms $ASK --json"),
              answer("timeline", some) + R"({"after":1731773140}})");
    EXPECT_EQ(compact("timeline alarms $ASK --json --request snapshot --preview"),
              answer("snapshot", some.substr(0, some.find(R"(,{"date")"))) + "null}");
    EXPECT_THAT(compact("timeline alarms --at 1000 --json --request placeholder"),
                AllOf(HasSubstr(R"("watched":6,"paused":0,"updated":960,)"), HasSubstr("null}")));
    EXPECT_THAT(output("timeline alarms --request snapshot --preview"), HasSubstr("6 watched"));
    EXPECT_THAT(output("timeline alarms --request snapshot"), HasSubstr("Not watching"));
}

TEST_F(Program, RendersTheSameBytesTwiceInEachFormat) {
    for (const auto& [ending, start] :
         foundation::pairs("png=\x89PNG svg=< pdf=%PDF- json={ txt=Alarms")) {
        for (const std::string family : {"systemSmall", "systemMedium"}) {
            const auto words = "render alarms $ASK --family " + family;
            output(words + " -o $C/a." + ending);
            const std::string bytes = contents(container_ / ("a." + ending));
            EXPECT_THAT(bytes, StartsWith(start));
            const auto format = words + " --format " + (ending == "txt" ? "text" : ending);
            EXPECT_EQ(output(format), bytes) << ending;
            EXPECT_NE(output(format + " --redacted"), bytes) << ending;
            EXPECT_NE(output(format + " --entry 4"), bytes) << ending;
            if (ending != "json") continue;
            EXPECT_EQ(foundation::decodeJSON<Drawing>(bytes).value(),
                      (Drawing{"com.tessary.desktop.widgets.alarms", family, 1731772840,
                               "tessary://alarms"}));
        }
    }
    const std::string parse = "import sys, xml.dom.minidom as dom; dom.parse(sys.argv[1])";
    EXPECT_EQ(std::system(("python3 -c '" + parse + "' " + folder_ + "/a.svg").c_str()), 0);
    EXPECT_EQ(output("render alarms $ASK --format text"),
              "Alarms firing\n4\nPaused · sign in\n3 watched · just now\n");
}

/// Of none of these locales has the machine generated any data.
TEST_F(Program, SpeaksTheEnvironmentsLanguageAtItsTime) {
    const std::string american = output("timeline alarms $ASK");
    for (const auto& row : table(R"(
                                                          | 16:01:40+00:00            | 1 min. ago
        LC_ALL=C                                          | 16:01:40+00:00            | 1 min. ago
        LANG=de_DE.UTF-8 TZ=Europe/Berlin                 | 17:01:40+01:00            | vor 1 Min.
        LANG=en_US LC_TIME=de_DE TZ=:Asia/Tokyo           | 2024-11-17T01:01:40+09:00 | vor 1 Min.
        LANG=en_US LC_TIME=en_GB LC_ALL=fr_FR TZ=Nowhere  | 16:01:40+00:00            | il y a 1
        LC_ALL= LC_TIME= LANG=ja_JP.UTF-8                 | 16:01:40+00:00            | 1 分前
        LC_MESSAGES=de_DE LC_NUMERIC=de_DE                | 16:01:40+00:00            | 1 min. ago)")) {
        const std::string lines = output("timeline alarms $ASK", row.at(0));
        const auto second = lines.find('\n') + 1;
        EXPECT_THAT(lines.substr(second, lines.find('\n', second) - second),
                    AllOf(HasSubstr(row.at(1)), HasSubstr(row.at(2))));
        EXPECT_EQ(output("timeline alarms $ASK --locale en_US --time-zone UTC", row.at(0)),
                  american);
    }
}

TEST_F(Program, FindsItsContainerThroughItsDictionary) {
    std::filesystem::create_directories(container_ / "data/group-containers/com.tessary.desktop");
    std::filesystem::rename(container_ / "widgets",
                            container_ / "data/group-containers/com.tessary.desktop/widgets");
    const std::string words = "render alarms --format text";
    EXPECT_THAT(output(words), HasSubstr("Paused · sign in"));
    EXPECT_THAT(output(words, "XDG_DATA_HOME=/nowhere"), HasSubstr("Not watching"));
    EXPECT_THAT(output(words + " --info /nowhere"), HasSubstr("Not watching"));
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
