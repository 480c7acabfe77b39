#include "desktop/command.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace tessary::desktop {

using namespace places;
namespace {

std::vector<std::string> words(const std::string& line) {
    std::istringstream in{line};
    return {std::istream_iterator<std::string>{in}, {}};
}

TEST(Command, NamesTheWordAtFaultAndWhatWasExpected) {
    const auto rows = table(R"(
        --foo                     | Unknown option --foo, expected an option that --help names
        --add                     | Missing argument for --add, expected an option that --help names
        alarms                    | call: 'alarms' is not an option that --help names
        --add clock               | --add: 'clock' is not one of alarms, alarm, metric
        --add alarm --family big  | --family: 'big' is not one of small, medium
        --add alarms --pin a      | --pin: expected a widget that shows a pin, alarm or metric
        --add alarm --position 4  | --position: '4' is not X,Y in points from the edges
        --add alarm --position 4,5,6 | --position: '4,5,6' is not X,Y in points from the edges
        --add alarm --position --4,5 | --position: '--4,5' is not X,Y in points from the edges
        --edit 1 --position 4,100001 | --position: '4,100001' is not X,Y in points from the edges
        --remove 0                | --remove: '0' is not a widget's number
        --open x                  | --open: 'x' is not a widget's number
        --remove 1x               | --remove: '1x' is not a widget's number
        --gallery --family small  | --family: expected --add or --edit with it
        --edit 99999999999 --pin a | --edit: '99999999999' is not a widget's number
        --json                    | --json: expected --list with it
        --pin a                   | --pin: expected --add or --edit with it
        --list --quit             | expected one of --list, --add, --remove, --edit, --open, --gallery, --reload and --quit, not 2
    )");
    for (const auto& row : rows) EXPECT_EQ(parseCall(words(row[0]), "/").fault, row[1]);
    EXPECT_EQ(parseCall({"--add", "alarm", "--pin", "\xff"}, "/").fault,
              "--pin: '\xEF\xBF\xBD' is not UTF-8");
}

TEST(Command, TakesPathsFromTheCallersFolder) {
    const auto call = parseCall({"--container", "a/../b", "--info=/i"}, "/home/ana");
    EXPECT_EQ(call.fault, "");
    EXPECT_EQ(call.command.action, Action::start);
    EXPECT_EQ(call.command.container, "/home/ana/b");
    EXPECT_EQ(call.command.info, "/i");
}

TEST(Command, OpensTheEditorWhereNothingIsToBeChanged) {
    EXPECT_EQ(parseCall({"--gallery"}, "/").command.action, Action::gallery);
    EXPECT_EQ(parseCall({"--edit", "2", "--pin="}, "/").command.action, Action::edit);
    const auto open = parseCall({"--edit", "2"}, "/").command;
    EXPECT_EQ(open.action, Action::openEditor);
    std::vector<PlacedWidget> widgets{{.number = 2, .kind = *kindNamed("alarm")}};
    const auto before = widgets;
    EXPECT_EQ(carryOut(open, widgets, {}).status, 0);
    EXPECT_EQ(widgets, before);
    widgets[0].kind = *kindNamed("alarms");
    EXPECT_EQ(carryOut(open, widgets, {}).complaint, "widget 2 shows no pin");
    EXPECT_EQ(carryOut(open, widgets = {}, {}).complaint, "there is no widget 2");
}

TEST(Command, HelpNamesEveryOption) {
    for (const char* option : {"--list", "--json", "--add", "--remove", "--edit", "--open", "--pin",
                               "--family", "--position", "--gallery", "--reload", "--quit",
                               "--container", "--info", "--help", "--version"})
        EXPECT_NE(helpText().find(option), std::string::npos) << option;
}

// Each command works on what those before it left.
TEST(Command, CarriesOutOneAfterTheOther) {
    const auto rows = table(R"(
        --add alarms                              | 1
        --add com.tessary.desktop.widgets.metric --family medium | 2
        --add alarm --pin a --position -40,7      | 3
        --list     | 1  alarms  small  20,20; 2  metric  medium  20,220; 3  alarm  small  -40,7  a;
        --edit 3 --position 400,-0                |
        --remove 1                                |
        --edit 2 --pin b --family small           |
        --add alarm                               | 4
        --remove 1                                | ! there is no widget 1
        --list     | 2  metric  small  20,220  b; 3  alarm  small  400,-0  a; 4  alarm  small  20,20;
    )");
    std::vector<PlacedWidget> widgets;
    for (const auto& row : rows) {
        const auto call = parseCall(words(row[0]), "/");
        ASSERT_EQ(call.fault, "");
        auto outcome = carryOut(call.command, widgets, {{.area = {1280, 720}}});
        for (auto& letter : outcome.output)
            if (letter == '\n') letter = row[0] == "--list" ? ';' : ' ';
        const auto said = outcome.status != 0 ? "! " + outcome.complaint : outcome.output;
        const auto shown = table(said + "|");
        std::string joined = shown.empty() ? "" : shown[0][0];
        for (auto at = joined.find(";"); at != joined.npos && at + 1 < joined.size();
             at = joined.find(";", at + 2))
            joined.insert(at + 1, " ");
        EXPECT_EQ(joined, row.size() > 1 ? row[1] : "") << row[0];
    }
    const Command noPin{.action = Action::edit, .number = 1, .pin = "x"};
    std::vector<PlacedWidget> alarms{{.number = 1, .kind = *kindNamed("alarms")}};
    EXPECT_EQ(carryOut(noPin, alarms, {}).complaint, "widget 1 shows no pin");
    EXPECT_EQ(alarms[0].pin, std::nullopt);
}

}  // namespace
}  // namespace tessary::desktop
