#include <gmock/gmock.h>
#include <set>
#include <sys/syscall.h>
#include <unistd.h>

#include "command/program.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/json_writing.h"
#include "protocol/replies.h"
#include "support/forbidden.h"
#include "support/golden.h"

namespace tessary {

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class Serve : public Program {
protected:
    /// The replies to these lines.
    std::string served(const std::string& lines) {
        container_.write("in", lines);
        return output("serve --require-sandbox $ASK <$C/in", "HOME=/nowhere");
    }
};

TEST_F(Serve, DrawsBehindTheSandboxWhatTheCommandDrawsWithoutOne) {
    for (const std::string name :
         {"api-5xx", "مرحبا 12", "שלום", "日本語", "देवनागरी", "ไทย", "한국어",
          "👩‍👩‍👧 🔥", "A\u0301\u0302", "\U00013000\uFDFF"}) {
        std::string alarms = exampleAlarms;
        container_.put("alarms", alarms.replace(alarms.find("api-5xx-rate-high"), 17, name));
        const bool isFirst = name == "api-5xx";
        for (const std::string format : {"png", "svg", "pdf", "json", "text"}) {
            if (format != "png" && !isFirst) continue;
            const auto reply =
                served(R"({"request": "timeline", "widget": "alarms", "family": "medium",)"
                       R"("scale": 3, "format": ")" +
                       format + "\"}");
            for (const int entry : isFirst ? std::vector{0, 1, 4} : std::vector{2}) {
                const std::string drawn =
                    output("render alarms $ASK --family medium --scale 3 --format " + format +
                           " --entry " + std::to_string(entry));
                const auto from =
                    reply.find("{\"date\":" + std::to_string(1731772840 + 60 * entry));
                ASSERT_NE(from, reply.npos);
                const std::string told =
                    reply.substr(from, reply.find("{\"date\"", from + 1) - from);
                EXPECT_THAT(told, AllOf(HasSubstr(name), HasSubstr(R"("url":"tessary://alarms")"),
                                        HasSubstr("\"picture\":\"" + foundation::base64(drawn))));
            }
        }
    }
}

TEST_F(Serve, DatesThePicturesOfMinutesThatLookAlike) {
    std::filesystem::remove(container_ / "widgets/alarms.json");
    const std::string drawn = output("render alarms $ASK --format pdf --entry 4");
    EXPECT_THAT(served(R"({"request": "timeline", "widget": "alarms", "format": "pdf"})"),
                HasSubstr(foundation::base64(drawn)));
}

TEST_F(Serve, AnswersAsTheCommandDoes) {
    EXPECT_EQ(served(R"({"id": 7, "request": "list"})"),
              "{\"id\":7," + compact("list --json").substr(1) + "\n");
    expectTranscript("replies.txt", [&](const std::string& line) { return served(line); });
}

/// In one process, of more locales than it keeps typesetters for; without a name, its own.
TEST_F(Serve, AnswersInTheLocaleAndZoneThatARequestNames) {
    std::string requests, drawn;
    for (const auto& [locale, zone] :
         pairs("de_DE=Asia/Tokyo ja-JP= ar_EG=UTC fr_FR= =GMT+5:30 de_DE= =")) {
        requests += R"({"request":"placeholder","widget":"metric","format":"text")";
        if (!locale.empty()) requests += R"(,"locale":")" + locale + '"';
        if (!zone.empty()) requests += R"(,"timeZone":")" + zone + '"';
        requests += "}\n";
        drawn +=
            foundation::base64(output("render metric $ASK --request placeholder --format text" +
                                      (locale.empty() ? "" : " --locale " + locale) +
                                      (zone.empty() ? "" : " --time-zone " + zone))) +
            '\n';
    }
    std::istringstream replies{served(requests)};
    std::string pictures;
    for (std::string reply; std::getline(replies, reply);) {
        const auto at = reply.find("\"picture\":\"") + 11;
        pictures += reply.substr(at, reply.find('"', at) - at) + '\n';
    }
    EXPECT_EQ(pictures, drawn);
    const auto all = words(drawn);
    EXPECT_EQ(std::set(all.begin(), all.end()).size(), 5);
}

TEST_F(Serve, FindsTheContainerHoweverItIsSpelled) {
    std::filesystem::create_directory(container_ / "deep");
    std::filesystem::create_directory_symlink("../widgets", container_ / "deep/link");
    container_.write("in", R"({"request": "snapshot", "widget": "alarms"})");
    for (const std::string& way : words("$C/ $C//. $C/./ /.$C $C/widgets/.. $C/deep/link/.. "
                                        "$C/deep/link/../ ../../../../../../../../..$C"))
        EXPECT_THAT(output("serve --container " + way + " <$C/in"),
                    HasSubstr(R"("case":"watching")"))
            << way;
}

/// A sanitizer keeps what is freed.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Serve, TakesLittleMemoryForALargeFileAndGivesItBack) {
    std::string points;
    for (int i = 0; i < 1'000'000; ++i)
        points += R"({"t":)" + std::to_string(i % 2) + R"(,"v":1},)";
    const auto file = replaced(examplePins({"a"}), "[],", "[" + points + R"({"t":9,"v":2}],)");
    container_.put("metrics", file);
    ASSERT_EQ(std::system(("mkfifo " + folder_ + "/asked " + folder_ + "/said").c_str()), 0);
    run("serve $ASK <$C/asked >$C/said & exec 3>$C/asked 4<$C/said; for format in svg json png; do "
        R"(echo '{"request":"timeline","widget":"metric","format":"'$format'"}' >&3; )"
        "head -n 1 <&4 >$C/reply; done; cat /proc/$!/status >$C/served; exec 3>&- 4<&-; wait $!");
    const auto last =
        foundation::decodeJSON<protocol::Reply<protocol::Timeline>>(contents(container_ / "reply"));
    EXPECT_THAT(last.value().entries.at(4).picture.value, StartsWith("\x89PNG"));
    run("timeline metric --json $ASK >$C/said & exec 4<$C/said; head -c 20000000 <&4 >$C/reply; "
        "cat /proc/$!/status >$C/printing; exec 4<&-; wait $!");
    const auto bytes = [&](const char* of, const char* name) {
        const std::string status = contents(container_ / of);
        return 1024 * std::stoul(status.substr(status.find(name) + 6));
    };
    EXPECT_LT(bytes("served", "VmHWM"), 9 * file.size());
    EXPECT_LT(bytes("served", "VmRSS"), 2 * file.size());
    EXPECT_LT(bytes("printing", "VmHWM"), 9 * file.size());
}
#endif

TEST_F(Serve, SaysWhatWasWrongWithARequestAndGoesOn) {
    expectTranscript("requests.txt", [&](const std::string& line) {
        const std::string replies = served(line + "\n \r\n{\"request\": \"list\"}");
        const auto end = replies.find('\n') + 1;
        EXPECT_THAT(replies.substr(end), StartsWith(R"({"id":null,"bundle")"));
        return replies.substr(0, end);
    });
}

TEST_F(Serve, EndsWithItsInputWhateverThatIs) {
    const std::string list = R"({"request": "list"})";
    EXPECT_EQ(served(""), "");
    EXPECT_THAT(served(list), StartsWith(R"({"id":null,"bundle")"));  // without a newline
    EXPECT_EQ(run("serve $ASK </dev/null"), 0);
    EXPECT_EQ(run("serve $ASK <$C"), 1);
    EXPECT_THAT(err_, HasSubstr("standard input: Is a directory"));
    EXPECT_EQ(run("serve $ASK <&-"), 1);
    EXPECT_THAT(err_, HasSubstr("standard input: Bad file descriptor"));
    EXPECT_EQ(run("serve $ASK </dev/null >&-"), 1);
    EXPECT_THAT(err_, HasSubstr("standard output: Bad file descriptor"));
    EXPECT_EQ(run("serve $ASK </dev/null 2>&-"), 0);
    container_.write("in", list);
    EXPECT_EQ(run("serve $ASK <$C/in >/dev/full"), 1);
    EXPECT_THAT(err_, HasSubstr("standard output: No space left on device"));
    // A line of 100 MB, and one request after it.
    std::filesystem::resize_file(container_.write("long", ""), 100'000'000);
    EXPECT_EQ(std::system(("(cat " + folder_ + "/long; echo; cat " + folder_ + "/in) | " +
                           TESSARY_PROGRAM + " serve >" + folder_ + "/out")
                              .c_str()),
              0);
    EXPECT_THAT(contents(container_ / "out"),
                AllOf(StartsWith(R"({"id":null,"error":"line: longer than 1048576 bytes"})"),
                      HasSubstr("\n{\"id\":null,\"bundle\"")));
}

#ifndef __SANITIZE_ADDRESS__  // which gives nothing back
TEST_F(Serve, KeepsNeitherWhatALargeFileTookNorWhatAHostLeftOpen) {
    std::vector<std::string> ids;
    for (int i = 0; i < 80'000; ++i) ids.push_back("id" + std::to_string(i));
    container_.put("alarm-pins", examplePins(ids));
    container_.write("go.sh",
                     R"(mkfifo $1/in; $2 serve --container $1 <$1/in >$1/out 9>$1/9 & exec 3>$1/in
        echo '{"request": "pins", "widget": "alarm"}' >&3; echo '{"request": "list"}' >&3
        until [ $(wc -l <$1/out) = 2 ]; do sleep 0.05; done; sed -n 's/VmRSS://p' /proc/$!/status
        ls /proc/$!/fd | wc -l)");
    const std::string told = folder_ + "/told";
    const std::string call = "sh " + folder_ + "/go.sh " + folder_ + " " + TESSARY_PROGRAM;
    ASSERT_EQ(std::system((call + " >" + told).c_str()), 0);
    EXPECT_GT(contents(container_ / "out").size(), 3'000'000);
    const auto [kilobytes, descriptors] = pairs(replaced(contents(told), " kB\n", "=")).front();
    EXPECT_LT(std::stol(kilobytes), 25'000);
    EXPECT_EQ(descriptors, "4");  // the three streams and the broker's channel
}
#endif

TEST_F(Serve, SaysOnceWhatTheKernelLacksOrRefuses) {
    container_.write("in", "{\"request\": \"list\"}\n{\"request\": \"list\"}\n");
    const auto runWithout = [&](long call, const std::string& words) {
        const pid_t child = ::fork();
        if (child == 0) {
            forbid(static_cast<unsigned>(call));
            ::_exit(run("serve $ASK " + words + " <$C/in"));
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        out_ = contents(container_ / "out");
        err_ = contents(container_ / "err");
        return WEXITSTATUS(status);
    };
    for (const auto& [call, where] : {std::pair{SYS_landlock_create_ruleset, ": "},
                                      std::pair{SYS_landlock_add_rule, ": no rule for /usr/"}}) {
        const auto lacks = AllOf(HasSubstr(std::string{"sandbox: no Landlock"} + where),
                                 EndsWith(": Function not implemented\n"));
        EXPECT_EQ(runWithout(call, ""), 0);
        EXPECT_THAT(err_, AllOf(StartsWith("tessary-widgets: running without a whole "), lacks));
        EXPECT_EQ(std::count(out_.begin(), out_.end(), '\n'), 2);
        EXPECT_EQ(runWithout(call, "--require-sandbox"), 1);
        EXPECT_THAT(err_, AllOf(StartsWith("tessary-widgets: no whole "), lacks));
        EXPECT_EQ(out_, "");
    }
}

}  // namespace
}  // namespace tessary
