#include "command/check.h"

#include <gtest/gtest.h>

#include "command/check_report.h"
#include "support/container.h"
#include "support/golden.h"
#include "support/table.h"

namespace tessary::command {
namespace {

const std::string minimalPin =
    R"({"id": "a", "label": "a", "profile": "p", "region": "r", "alarmName": "a", "reason": "",)"
    R"( "namespace": "n", "metricName": "m", "stat": "s", "periodSeconds": 60, "points": [],)"
    R"( "authExpired": false})";

std::string pinsFile(const std::string& pins, const std::string& version = "1") {
    return R"({"schemaVersion": )" + version +
           R"(, "updatedMs": 1731772800000, "intervalSeconds": 60, "pins": [)" + pins + "]}";
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

/// Three usable files, to be spoiled one by one.
class Check : public testing::Test {
protected:
    Check() { restore(); }
    void restore() const {
        container_.put("alarms", exampleAlarms);
        container_.put("alarm-pins", pinsFile(minimalPin));
        container_.put("metrics", pinsFile(minimalPin));
    }
    Inspection foundAt(double seconds) const {
        snapshot::Source later = container_.source();
        later.places.dictionaries = {
            info_.write("info.json", R"({"TessaryAppGroup":"A1.com.tessary.desktop"})")};
        later.clock = [seconds] { return Date{seconds}; };
        return inspectIn(later);
    }
    Inspection found() const { return foundAt(exampleNow.seconds); }
    Inspection inspectIn(const snapshot::Source& source) const {
        for (const auto& entry : std::filesystem::directory_iterator(container_ / ""))
            for (const auto& file : std::filesystem::directory_iterator(entry))
                if (!file.is_symlink()) std::filesystem::last_write_time(file, {});
        return inspect(source);
    }
    /// The status and what is said, of all files or of one; the container's folder as /c.
    std::string said(const Inspection& inspection, const std::string& of = "") const {
        std::string all =
            asText(inspection, {"en_US", "UTC"}) + "\n" +
            (of.empty() ? asJSON(inspection, foundation::JSONWriter::Style::indented) : "");
        const std::string folder = container_ / "";
        for (auto at = all.find(folder); at != all.npos; at = all.find(folder))
            all.replace(at, folder.size(), "/c/");
        const auto start = of.empty() ? 0 : all.find("\n" + of) + 1;
        const auto end = of.empty() ? all.size() : all.find("\n\n", start) + 1;
        return "status " + std::to_string(exitStatus(inspection)) + '\n' +
               all.substr(start, end - start);
    }

    Container container_{};
    TemporaryFolder info_{};
};

TEST_F(Check, FindsTheFirstFault) {
    expectTranscript("faults.txt", [&](const std::string& spoiling) {
        const auto parts = table(spoiling).at(0);
        container_.put("alarms", replaced(exampleAlarms, parts.at(0), parts.at(1)));
        return said(found(), "alarms.json");
    });
}

TEST_F(Check, SaysAtWhichStepTheWalkEnded) {
    std::string dump;
    const auto add = [&](const std::string& heading, const Inspection& inspection) {
        dump += "== " + heading + '\n' + said(inspection, "alarm-pins.json");
    };
    for (const char* group : {"", ".com.example", "$(Prefix)com.x", "a/b"}) {
        const std::string key = *group == '\0' ? "Other" : "TessaryAppGroup";
        const auto info = info_.write("info.json", "{\"" + key + "\":\"" + group + "\"}");
        snapshot::Source source = container_.source();
        source.places = {{}, {info}};
        add("group '" + std::string{group} + '\'', inspectIn(source));
    }
    const auto file = container_ / "widgets/alarm-pins.json";
    container_.put("alarm-pins", pinsFile(minimalPin, "2"));
    add("a later version", found());
    std::filesystem::remove(file);
    add("no file", found());
    std::filesystem::create_directory(file);
    add("a folder", found());
    std::filesystem::remove(file);
    std::filesystem::create_symlink("nowhere", file);
    add("a broken link", found());
    std::filesystem::remove_all(container_ / "widgets");
    add("no folder", found());
    expectGolden("walk.txt", dump);
}

TEST_F(Check, SaysWhatEachWidgetShowsAndSinceWhen) {
    // Limits of 180 and 600 seconds, behind 1731772800.
    std::string dump = "== stale\n" + said(foundAt(1731773400.5));
    dump += "== at the limit\n" + said(foundAt(1731772980), "alarms.json");
    dump += "== too early\n" + said(foundAt(1731770000), "metrics.json");
    container_.put("metrics", pinsFile("", "-7"));
    dump += "== without pins\n" + said(found(), "metrics.json");
    const std::string error =
        replaced(minimalPin, "\"id\": \"a\"", R"("error": "t\u001B", "id": "é")");
    const std::string expired = replaced(minimalPin, "false", "true, \"error\": \"unseen\"");
    const std::string again = replaced(error, "é", "e\\u0301");
    container_.put("metrics", pinsFile(minimalPin + "," + expired + "," + error + "," + again));
    container_.put("alarm-pins", pinsFile(expired + "," + expired));
    container_.put("alarms", replaced(exampleAlarms, "\"watching\"", "\"Watching\""));
    dump += "== with problems\n" + said(foundAt(1731773400));
    expectGolden("shown.txt", dump);
}

TEST_F(Check, FindsTheSameUntilAFilesContentDiffers) {
    const Inspection first = found();
    std::filesystem::last_write_time(*first.files.at(0).path,
                                     std::filesystem::file_time_type::clock::now());
    EXPECT_TRUE(foundTheSame(first, foundAt(1731772841)));
    EXPECT_FALSE(foundTheSame(first, foundAt(1731772981)));
    container_.put("metrics", pinsFile(minimalPin) + " ");
    EXPECT_FALSE(foundTheSame(first, found()));
    restore();
    EXPECT_TRUE(foundTheSame(first, found()));
}

}  // namespace
}  // namespace tessary::command
