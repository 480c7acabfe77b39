// Runs of the built program, as a shell makes them.
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "platform/foundation/json_decoding.h"
#include "support/container.h"

namespace tessary {

/// What a test wants to know of the JSON pictures.
struct Drawing {
    std::string kind{};
    std::string family{};
    double date{};
    std::optional<std::string> url{};
    std::string colorScheme{};
};
namespace foundation {
template <>
inline constexpr auto fieldsOf<Drawing> = std::tuple{
    Field{"kind", &Drawing::kind}, Field{"family", &Drawing::family}, Field{"date", &Drawing::date},
    Field{"url", &Drawing::url}, Field{"colorScheme", &Drawing::colorScheme}};
}  // namespace foundation

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string contents(const std::filesystem::path& file) {
    std::ifstream in{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
}

struct Outcome {
    int status{};
    std::string out{};
    std::string err{};
};

class Program : public testing::Test {
protected:
    Program() { container_.put("alarms", exampleAlarms); }

    /// Runs the program with these words of the shell, in an environment of these variables alone.
    /// $C is the container; $ASK asks for the example at its own time.
    Outcome run(const std::string& words, const std::string& variables = "") const {
        const std::string folder = container_.root();
        const std::string command =
            "C=" + folder +
            "; ASK=\"--container $C --at 1731772840\"; env -i XDG_DATA_HOME=" + folder +
            "none TZ=UTC ASAN_OPTIONS=detect_leaks=0 " + variables + " " + TESSARY_PROGRAM + " >" +
            folder + "out 2>" + folder + "err " + words;
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(container_ / "out"),
                contents(container_ / "err")};
    }

    Container container_{};
};

/// `text` without the white space that JSON is laid out with.
std::string compact(std::string text) {
    for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', at))
        text.erase(at, std::min(text.find_first_not_of(" \n", at), text.size()) - at);
    for (auto at = text.find("\": "); at != std::string::npos; at = text.find("\": ", at + 1))
        text.erase(at + 2, 1);
    return text;
}

TEST_F(Program, SaysByItsStatusWhoseFaultItWas) {
    struct Case {
        std::string words{};
        int status{};
        std::string message{};
    };
    const std::vector<Case> cases{
        {"list", 0, ""},
        {"timeline alarms", 0, ""},
        {"timeline alarms --container /nowhere --info /nowhere", 0, ""},
        {"render com.tessary.desktop.widgets.alarms --format text", 0, ""},
        {"render alarms $ASK --format text -o - ", 0, ""},
        {"--version", 0, ""},
        {"--help", 0, ""},
        {"list --help", 0, ""},
        {"timeline --help", 0, ""},
        {"render --help", 0, ""},
        {"pins --help", 0, ""},
        {"list --version", 0, ""},
        {"timeline --version", 0, ""},
        {"render --version", 0, ""},
        {"pins --version", 0, ""},
        {"pins alarm --json", 0, ""},
        {"render alarms -o $C", 1, "Is a directory"},
        {"render alarms -o $C/none/a.png", 1, "none/a.png: No such file or directory"},
        {"render alarms -o /dev/full", 1, "/dev/full: No space left on device"},
        {"render alarms >/dev/full", 1, "standard output: No space left on device"},
        {"list >&-", 1, "standard output: Bad file descriptor"},
        {"timeline alarms >&-", 1, "standard output: Bad file descriptor"},
        {"render alarms $ASK --format svg >&-", 1, "standard output: Bad file descriptor"},
        {"--help >&-", 1, "standard output: Bad file descriptor"},
        {"", 2, "no command"},
        {"draw", 2, "'draw'"},
        {"timeline Alarms", 2, "'Alarms'"},
        {"render widgets.alarms", 2, "'widgets.alarms'"},
        {"render alarms --entry 5", 2, "--entry: '5' is not the number of an entry, from 0 to 4"},
        {"render alarms --request snapshot --entry 1", 2, "from 0 to 0"},
        {"render alarms --pin orders", 2, "'alarms'"},
        {"pins alarms", 2, "'alarms'"},
        {"timeline list", 2, "'list'"},
        {"list timeline", 2, "'timeline'"},
        {"render alarms --format text timeline", 2, "'timeline'"},
        {"render 'a\nb'", 2, "'a b'"},
        {"render alarms --family '\x1B[2J\n'", 2, "' [2J '"},
        {"render alarms --family large", 2, "'large'"},
        {"timeline alarms --at yesterday", 2, "'yesterday'"}};
    for (const auto& [words, status, message] : cases) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, status) << words;
        EXPECT_EQ(outcome.out.empty(), status != 0) << words;
        if (status == 0) {
            EXPECT_EQ(outcome.err, "") << words;
            continue;
        }
        EXPECT_THAT(outcome.err, AllOf(StartsWith("tessary-widgets: "), HasSubstr(message)));
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    }
}

TEST_F(Program, KeepsPicturesFromATerminal) {
    const auto onTerminal = [&](const std::string& words) {
        const std::string call = TESSARY_PROGRAM " " + words + " --container /nowhere";
        const std::string log = container_ / "log";
        const int status =
            std::system(("script -qec '" + call + "' /dev/null </dev/null >" + log).c_str());
        return std::pair{WEXITSTATUS(status), contents(log)};
    };
    for (const std::string format : {"png", "svg", "pdf"}) {
        const auto [status, text] = onTerminal("render alarms --format " + format);
        EXPECT_EQ(status, 2) << format;
        EXPECT_THAT(text, HasSubstr("--output"));
    }
    EXPECT_EQ(onTerminal("render alarms --format text").first, 0);
    EXPECT_EQ(onTerminal("render alarms --format json").first, 0);
    EXPECT_EQ(onTerminal("render alarms -o " + (container_ / "a.png").string()).first, 0);
}

TEST_F(Program, ListsTheBundle) {
    const auto widget = [](const std::string& name, const std::string& intent,
                           const std::string& title, const std::string& text) {
        return R"({"kind":"com.tessary.desktop.widgets.)" + name + R"(","configuration":")" +
               (intent == "null" ? "static" : "intent") + R"(","intent":)" + intent +
               R"(,"displayName":")" + title + R"(","description":")" + text +
               R"(","families":["systemSmall","systemMedium"]})";
    };
    EXPECT_EQ(compact(run("list --json").out),
              R"({"bundle":"TessaryWidgets","widgets":[)" +
                  widget("alarms", "null", "Alarms firing",
                         "CloudWatch alarms in ALARM across the profiles Tessary watches.") +
                  "," +
                  widget("metric", "\"Metric\"", "CloudWatch metric",
                         "A metric you pinned in Tessary: its latest value and recent hours.") +
                  "," +
                  widget("alarm", "\"Alarm\"", "CloudWatch alarm",
                         "One alarm you pinned in Tessary: its state and its metric against the "
                         "threshold.") +
                  "]}");
    for (const char* words : {"Alarms firing", "CloudWatch metric", "CloudWatch alarm",
                              "intent \"Metric\"", "systemSmall, systemMedium"})
        EXPECT_THAT(run("list").out, HasSubstr(words));
}

TEST_F(Program, PrintsTimelinesAsJSON) {
    EXPECT_EQ(
        run("timeline alarms --container $C/none --at 1731772840.5 --json").out,
        "{\n  \"kind\": \"com.tessary.desktop.widgets.alarms\",\n"
        "  \"request\": \"timeline\",\n  \"entries\": [\n" +
            [] {
                std::string entries;
                for (const char* date : {"2840", "2900", "2960", "3020", "3080"})
                    entries += std::string{entries.empty() ? "" : ",\n"} +
                               "    {\n      \"date\": 173177" + date +
                               ".5,\n      \"display\": {\n"
                               "        \"case\": \"unavailable\"\n      }\n    }";
                return entries;
            }() +
            "\n  ],\n  \"policy\": {\n    \"after\": 1731773140.5\n  }\n}\n");

    const auto entry = [](const std::string& date, const std::string& stale) {
        return R"({"date":)" + date +
               R"(,"display":{"case":"watching","firing":4,"watched":3,"paused":1,)"
               R"("updated":1731772800,"stale":)" +
               stale +
               R"(,"alarms":[{"name":"api-5xx-rate-high","profile":"prod","region":"us-east-1",)"
               R"("updatedMs":1731772740000,"reason":"Threshold Crossed"},)"
               R"({"name":"orders-queue-age","profile":"prod","region":"eu-west-1",)"
               R"("updatedMs":null,"reason":"Threshold Crossed"},)"
               R"({"name":"ingest-lambda-errors","profile":"shared","region":"us-east-1",)"
               R"("updatedMs":null,"reason":""}]}})";
    };
    const auto answer = [](const std::string& request, const std::string& entries,
                           const std::string& policy) {
        return R"({"kind":"com.tessary.desktop.widgets.alarms","request":")" + request +
               R"(","entries":[)" + entries + R"(],"policy":)" + policy + "}";
    };
    EXPECT_EQ(compact(run("timeline alarms $ASK --json").out),
              answer("timeline",
                     entry("1731772840", "false") + "," + entry("1731772900", "false") + "," +
                         entry("1731772960", "false") + "," + entry("1731773020", "true") + "," +
                         entry("1731773080", "true"),
                     R"({"after":1731773140})"));
    EXPECT_EQ(compact(run("timeline alarms $ASK --json --request snapshot --preview").out),
              answer("snapshot", entry("1731772840", "false"), "null"));
    EXPECT_THAT(compact(run("timeline alarms --at 1000 --json --request placeholder").out),
                AllOf(HasSubstr(R"("firing":4,"watched":6,"paused":0,"updated":960,)"),
                      EndsWith(R"(,"policy":null})")));
    EXPECT_THAT(run("timeline alarms --at 1000 --request snapshot --preview").out,
                HasSubstr("6 watched"));
    EXPECT_THAT(run("timeline alarms --at 1000 --request snapshot").out, HasSubstr("Not watching"));
}

TEST_F(Program, RendersTheSameBytesTwiceInEachFormat) {
    const std::vector<std::pair<std::string, std::string>> formats{
        {"png", "\x89PNG\r\n"}, {"svg", "<"}, {"pdf", "%PDF-"}, {"json", "{"}, {"txt", "Alarms"}};
    for (const auto& [ending, start] : formats) {
        for (const std::string family : {"small", "medium"}) {
            const auto words = "render alarms $ASK --family " + family;
            ASSERT_EQ(run(words + " -o $C/a." + ending).status, 0);
            const std::string bytes = contents(container_ / ("a." + ending));
            EXPECT_THAT(bytes, StartsWith(start));
            const auto format = " --format " + (ending == "txt" ? "text" : ending);
            EXPECT_EQ(run(words + format).out, bytes) << ending;
            EXPECT_NE(run(words + format + " --redacted").out, bytes) << ending;
            EXPECT_NE(run(words + format + " --entry 4").out, bytes) << ending;
            if (ending == "json") {
                const auto drawing = foundation::decodeJSON<Drawing>(bytes).value();
                EXPECT_EQ(drawing.kind, "com.tessary.desktop.widgets.alarms");
                EXPECT_EQ(drawing.family, family == "small" ? "systemSmall" : "systemMedium");
                EXPECT_EQ(drawing.date, 1731772840);
                EXPECT_EQ(drawing.url, "tessary://alarms");
                EXPECT_EQ(drawing.colorScheme, "dark");
            }
            if (ending == "svg") {
                const std::string parse =
                    "python3 -c 'import sys, xml.dom.minidom as dom; "
                    "dom.parse(sys.argv[1])' ";
                EXPECT_EQ(std::system((parse + (container_ / "a.svg").string()).c_str()), 0);
            }
        }
    }
    EXPECT_EQ(run("render alarms $ASK --format text").out,
              "Alarms firing\n4\nPaused · sign in\n3 watched · just now\n");
}

/// No locale is generated on the machine for any of these.
TEST_F(Program, SpeaksTheEnvironmentsLanguageAtItsTime) {
    for (const auto& [variables, time, phrase] : std::vector<std::array<std::string, 3>>{
             {"", "16:01:40+00:00", "1 min. ago"},
             {"LC_ALL=C", "16:01:40+00:00", "1 min. ago"},
             {"LANG=de_DE.UTF-8 TZ=Europe/Berlin", "17:01:40+01:00", "vor 1 Min."},
             {"LANG=en_US LC_TIME=de_DE TZ=:Asia/Tokyo", "2024-11-17T01:01:40+09:00", "vor 1 Min."},
             {"LANG=en_US LC_TIME=en_GB LC_ALL=fr_FR.UTF-8 TZ=Nowhere", "16:01:40+00:00",
              "il y a 1"},
             {"LC_ALL= LC_TIME= LANG=ja_JP.UTF-8", "16:01:40+00:00", "1 分前"},
             {"LC_MESSAGES=de_DE LC_NUMERIC=de_DE", "16:01:40+00:00", "1 min. ago"}}) {
        const std::string lines = run("timeline alarms $ASK", variables).out;
        const std::string second = lines.substr(lines.find('\n') + 1);
        EXPECT_THAT(second.substr(0, second.find('\n')), AllOf(HasSubstr(time), HasSubstr(phrase)))
            << variables;
        EXPECT_EQ(run("timeline alarms $ASK --locale en_US --time-zone UTC", variables).out,
                  run("timeline alarms $ASK").out);
    }
}

TEST_F(Program, FindsItsContainerThroughItsDictionary) {
    const std::string group = container_ / "none/group-containers/com.tessary.desktop";
    std::filesystem::create_directories(group);
    std::filesystem::rename(container_ / "widgets", group + "/widgets");
    EXPECT_THAT(run("render alarms --format text").out, HasSubstr("Paused · sign in"));
    EXPECT_THAT(run("render alarms --format text", "XDG_DATA_HOME=/nowhere").out,
                HasSubstr("Not watching"));
    EXPECT_THAT(run("render alarms --format text --info /nowhere").out, HasSubstr("Not watching"));
}

}  // namespace
}  // namespace tessary
