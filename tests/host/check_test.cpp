#include "host/check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/check_report.h"
#include "support/container.h"
#include "support/table.h"

namespace tessary::host {
namespace {

using foundation::ScopedSurroundings;
using foundation::Surroundings;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

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
    Inspection found() const { return inspectIn(container_.surroundings()); }
    static Inspection inspectIn(const Surroundings& surroundings) {
        const ScopedSurroundings scope{surroundings};
        return inspect();
    }
    Inspection foundAt(double seconds) const {
        Surroundings later = container_.surroundings();
        later.clock = [seconds] { return Date{seconds}; };
        return inspectIn(later);
    }
    static std::string text(const Inspection& inspection) {
        return asText(inspection, {"en_US", "UTC"});
    }

    Container container_{};
};

TEST_F(Check, TakesAllThreeFilesToBeUsable) {
    for (const auto& pins : {minimalPin, std::string{}}) {
        container_.put("metrics", pinsFile(pins, "-7"));
        const Inspection all = found();
        EXPECT_EQ(exitStatus(all), 0);
        for (const FileFinding& file : all.files) {
            EXPECT_EQ(file.step, Step::usable);
            EXPECT_EQ(file.problem, std::nullopt);
            EXPECT_EQ(std::filesystem::file_size(*file.path), file.size);
        }
        EXPECT_EQ(all.files.at(2).shows.display, pins.empty() ? "notPinned" : "pinned");
    }
}

TEST_F(Check, FindsTheFirstFault) {
    // What of the alarms file is replaced, by what; the fault's line and column, message, line.
    for (const auto& row : table(R"(
        "failed": true        | "failed": 1          | 5:94  | /targets/1/failed: expected true or false, found 1
        "firing": 4           | "firing": 4.5        | 2:105 | /firing: expected a 64-bit integer, found 4.5
        "reason": ""          | "reason": null       | 11:112 | /topAlarms/2/reason: expected a text, found null
        "region": "eu-west-1" | "regian": "ü", "x": 1 | 5:99  | /targets/1/region: expected a text, found nothing
        "state": "watching"   | "state": watching    | 2:32  | /state: expected a JSON value, found watching
        "topAlarms"           | "topAlarms           | 8:16  | /targets: expected an escape (\n, \t, \u0000) for a control character, found \x0A)")) {
        container_.put("alarms", replaced(exampleAlarms, row.at(0), row.at(1)));
        const Inspection bad = found();
        const FileFinding& file = bad.files.at(0);
        EXPECT_EQ(exitStatus(bad), 1);
        ASSERT_TRUE(file.fault) << row.at(0);
        EXPECT_EQ(file.step, Step::content);
        EXPECT_EQ(std::to_string(file.fault->line) + ':' + std::to_string(file.fault->column),
                  row.at(2))
            << file.fault->text << '\n'
            << file.fault->caret;
        EXPECT_THAT(*file.problem, HasSubstr(row.at(3)));
        EXPECT_THAT(text(bad), AllOf(HasSubstr(".json:" + row.at(2) + ": " + *file.problem),
                                     HasSubstr(" | " + file.fault->text + "\n"),
                                     HasSubstr(" | " + file.fault->caret + "\n"),
                                     HasSubstr("unavailable: there is no usable file")));
    }
}

TEST_F(Check, SaysAtWhichStepTheWalkEnded) {
    const auto spoiled = [&](const auto& spoil) {
        Surroundings surroundings = container_.surroundings();
        spoil(surroundings);
        return inspectIn(surroundings);
    };
    const auto expect = [](const Inspection& inspection, Step step, const std::string& problem) {
        EXPECT_EQ(exitStatus(inspection), 1);
        const FileFinding& file = inspection.files.at(1);
        EXPECT_EQ(file.step, step) << problem;
        EXPECT_THAT(file.problem.value_or(""), HasSubstr(problem));
        EXPECT_EQ(file.shows.display, "notPinned");
        EXPECT_THAT(text(inspection), HasSubstr(problem));
    };
    for (const auto& row : table(R"(
        -                 | group     | no text under TessaryAppGroup
        .com.example      | group     | begins with a dot
        $(Prefix)com.x    | group     | begins with a dollar sign
        a/b               | container | no folder for the group "a/b")"))
        expect(spoiled([&](Surroundings& each) {
                   each.container = foundation::groupContainer;
                   each.information = [&](auto) {
                       return row.at(0) == "-" ? std::nullopt : std::optional{row.at(0)};
                   };
               }),
               row.at(1) == "group" ? Step::group : Step::container, row.at(2));

    const auto file = container_ / "widgets/alarm-pins.json";
    container_.put("alarm-pins", pinsFile(minimalPin, "2"));
    expect(found(), Step::schema, "schemaVersion is 2");
    std::filesystem::remove(file);
    expect(found(), Step::file, "No such file or directory");
    std::filesystem::create_directory(file);
    expect(found(), Step::file, "not a regular file: a folder stands there");
    std::filesystem::remove(file);
    std::filesystem::create_symlink("nowhere", file);
    expect(found(), Step::file, "alarm-pins.json leads nowhere");
    std::filesystem::remove_all(container_ / "widgets");
    expect(found(), Step::file, "there is no folder " + (container_ / "widgets").string());
}

TEST_F(Check, SaysWhatEachWidgetShowsAndSinceWhen) {
    // Limits of 180 and 600 seconds, behind 1731772800.
    EXPECT_THAT(text(foundAt(1731772980)), HasSubstr("watching: fresh until 2024-11-16T16:03:00"));
    const Inspection stale = foundAt(1731773400.5);
    EXPECT_THAT(text(stale), AllOf(HasSubstr("watching: stale since 2024-11-16T16:03:00"),
                                   HasSubstr("a by default: stale since 2024-11-16T16:10:00"),
                                   HasSubstr("updated 2024-11-16T16:00:00+00:00 (10 min ago)"),
                                   HasSubstr("  a: stale\n"),
                                   HasSubstr("shared · us-east-1: sign-in expired for shared")));
    EXPECT_EQ(exitStatus(stale), 0);
    EXPECT_THAT(text(foundAt(1731770000)), HasSubstr("updatedMs lies in the future"));

    const std::string error =
        replaced(minimalPin, "\"id\": \"a\"", R"("error": "t\u001B", "id": "é")");
    const std::string expired = replaced(minimalPin, "false", "true, \"error\": \"unseen\"");
    const std::string again = replaced(error, "é", "e\\u0301");
    container_.put("metrics", pinsFile(minimalPin + "," + expired + "," + error + "," + again));
    container_.put("alarm-pins", pinsFile(expired + "," + expired));
    container_.put("alarms", replaced(exampleAlarms, "\"watching\"", "\"Watching\""));
    const Inspection all = foundAt(1731773400);
    EXPECT_THAT(text(all), AllOf(HasSubstr("state is \"Watching\" and not \"watching\""),
                                 HasSubstr("a: fresh\n"), HasSubstr("a (é): error: t␛\n"),
                                 HasSubstr("a: sign-in expired for p\n"),
                                 HasSubstr("a (e\u0301): hidden behind an earlier pin")));
    EXPECT_EQ(all.files.at(1).repeated, (std::vector<Repeat>{{"a", 2}}));
    EXPECT_EQ(all.files.at(2).repeated, (std::vector<Repeat>{{"a", 2}, {"é", 2}}));
    const std::string json = asJSON(all, foundation::JSONWriter::Style::compact);
    EXPECT_THAT(
        json,
        AllOf(HasSubstr(R"("shows":{"case":"pinned","why":"","stale":false,)"
                        R"("staleAfter":1731773400,"paused":[],"pins":[{"id":"a",)"
                        R"("label":"a","profile":"p","shows":"fresh","error":null,)"
                        R"("hidden":false})"),
              HasSubstr(R"("repeated":[{"identifier":"a","times":2}])"),
              HasSubstr(R"("group":{"value":"A1.com.tessary.desktop","rule":"identifier"})")));
    EXPECT_EQ(json.find('\n'), json.size() - 1);
}

TEST_F(Check, FindsTheSameUntilAFilesContentDiffers) {
    const Inspection first = found();
    std::filesystem::last_write_time(*first.files.at(0).path, {});
    EXPECT_TRUE(foundTheSame(first, foundAt(1731772841)));
    EXPECT_FALSE(foundTheSame(first, foundAt(1731772981)));
    container_.put("metrics", pinsFile(minimalPin) + " ");
    EXPECT_FALSE(foundTheSame(first, found()));
    restore();
    EXPECT_TRUE(foundTheSame(first, found()));
}

}  // namespace
}  // namespace tessary::host
