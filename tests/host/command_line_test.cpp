#include "host/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"

namespace tessary::host {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string printed(const std::optional<std::filesystem::path>& path) {
    return path ? path->string() : "-";
}

std::string printed(const PinChoice& pin) {
    if (pin.kind == PinChoice::Kind::identifier) return "'" + pin.identifier + "'";
    return pin.kind == PinChoice::Kind::none ? "none" : "default";
}

std::string printed(const RequestOptions& request) {
    return " container=" + printed(request.container) + " info=" + printed(request.info) +
           " request=" + std::string{foundation::name(request.request)} +
           " preview=" + (request.preview ? "on" : "off") + " pin=" + printed(request.pin) +
           " at=" + (request.at ? std::to_string(request.at->seconds) : "-") +
           " locale=" + request.locale.value_or("-") + " zone=" + request.timeZone.value_or("-");
}

/// A call as one line that holds all of it.
struct CallPrinter {
    std::string operator()(const ListCommand& list) const {
        return list.json ? "list json" : "list";
    }
    std::string operator()(const TimelineCommand& timeline) const {
        return "timeline " + timeline.widget + printed(timeline.request) +
               (timeline.json ? " json" : "");
    }
    std::string operator()(const RenderCommand& render) const {
        const PictureOptions& picture = render.picture;
        return "render " + render.widget + printed(render.request) +
               " family=" + std::string{foundation::name(picture.family)} +
               " entry=" + std::to_string(picture.entry) +
               " redacted=" + (picture.redacted ? "on" : "off") +
               " scale=" + std::to_string(picture.scale) +
               " format=" + std::string{foundation::name(picture.format)} +
               " output=" + printed(picture.output);
    }
    std::string operator()(const PinsCommand& pins) const {
        std::string result = "pins " + pins.widget + printed(pins.request);
        for (const std::string& id : pins.ids) result += " id='" + id + "'";
        return result + (pins.json ? " json" : "");
    }
    std::string operator()(const Information& information) const { return information.text; }
    std::string operator()(const UsageFault& fault) const { return "fault: " + fault.message; }
};

std::string parsed(const std::vector<std::string>& words) {
    return std::visit(CallPrinter{}, parseCommandLine(words));
}
std::string parsed(const std::string& words) { return parsed(foundation::words(words)); }

const std::string requestDefaults =
    " container=- info=- request=timeline preview=off pin=default at=- locale=- zone=-";
const std::string pictureDefaults =
    " family=systemSmall entry=0 redacted=off scale=2.000000 format=png output=-";

TEST(CommandLine, KnowsItsCommands) {
    EXPECT_EQ(parsed("list"), "list");
    EXPECT_EQ(parsed("list --json"), "list json");
    EXPECT_EQ(parsed("timeline metric"), "timeline metric" + requestDefaults);
    EXPECT_EQ(parsed("timeline --json alarms"), "timeline alarms" + requestDefaults + " json");
    EXPECT_EQ(parsed("pins alarm --json"), "pins alarm" + requestDefaults + " json");
    EXPECT_EQ(parsed({"pins", "--id", "b", "metric", "--id=a", "--id", ""}),
              "pins metric" + requestDefaults + " id='b' id='a' id=''");
    EXPECT_EQ(parsed("render x.y"), "render x.y" + requestDefaults + pictureDefaults);
}

/// Each option, written in both ways and on both sides of the widget, changes what it names alone.
TEST(CommandLine, TakesEveryOptionInBothForms) {
    struct Case {
        std::string option{};
        std::string value{};
        std::string former{};
        std::string changed{};
    };
    const std::vector<Case> cases{
        {"--container", "a b", "container=-", "container=a b"},
        {"--info", "-x.plist", "info=-", "info=-x.plist"},
        {"--request", "placeholder", "request=timeline", "request=placeholder"},
        {"--request", "snapshot", "request=timeline", "request=snapshot"},
        {"--pin", "orders:cpu", "pin=default", "pin='orders:cpu'"},
        {"--at", "1731772840.5", "at=-", "at=1731772840.500000"},
        {"--at", "-3", "at=-", "at=-3.000000"},
        {"--at", "2024-11-16T17:00:40+01:00", "at=-", "at=1731772840.000000"},
        {"--locale", "de-DE", "locale=-", "locale=de_DE"},
        {"--locale", "ar_EG.UTF-8", "locale=-", "locale=ar_EG"},
        {"--time-zone", "Europe/Berlin", "zone=-", "zone=Europe/Berlin"},
        {"--family", "medium", "family=systemSmall", "family=systemMedium"},
        {"--family", "systemMedium", "family=systemSmall", "family=systemMedium"},
        {"--entry", "4", "entry=0", "entry=4"},
        {"--scale", "1", "scale=2", "scale=1"},
        {"--scale", "2.5", "scale=2.0", "scale=2.5"},
        {"--scale", "4", "scale=2", "scale=4"},
        {"--format", "text", "format=png", "format=text"},
        {"--output", "a", "output=-", "output=a"},
        {"-o", "b.png", "output=-", "output=b.png"},
        {"--output", "p.SVG/c.svg", "png output=-", "svg output=p.SVG/c.svg"},
        {"--output", "d.pdf", "png output=-", "pdf output=d.pdf"},
        {"--output", "e.json", "png output=-", "json output=e.json"},
        {"--output", "f.txt", "png output=-", "text output=f.txt"},
        {"--output", "g.gif", "output=-", "output=g.gif"},
        {"--output", "-", "output=-", "output=-"}};
    const std::string defaults = "render alarms" + requestDefaults + pictureDefaults;
    for (const auto& [option, value, former, changed] : cases) {
        std::string expected = defaults;
        expected.replace(expected.find(former), former.size(), changed);
        EXPECT_EQ(parsed({"render", "alarms", option, value}), expected) << option;
        EXPECT_EQ(parsed({"render", option, value, "alarms"}), expected) << option;
        const std::string joined = option + (option.starts_with("--") ? "=" : "") + value;
        EXPECT_EQ(parsed({"render", joined, "alarms"}), expected) << joined;
    }
    EXPECT_THAT(parsed("render alarms --preview"), HasSubstr(" preview=on "));
    EXPECT_THAT(parsed("render alarms --no-pin"), HasSubstr(" pin=none "));
    EXPECT_THAT(parsed({"render", "alarm", "--pin", ""}), HasSubstr(" pin='' "));
    EXPECT_THAT(parsed("render alarms --redacted"), HasSubstr(" redacted=on "));
    EXPECT_THAT(parsed("render alarms -o a.svg --format json"), HasSubstr("format=json output=a"));
    EXPECT_THAT(parsed("timeline alarms --at 5 --json --preview"),
                AllOf(HasSubstr(" at=5"), HasSubstr("preview=on"), HasSubstr(" json")));
}

TEST(CommandLine, NamesTheWordAtFaultAndWhatWasExpected) {
    const std::string widgets = "alarms, alarm, metric, or a kind identifier";
    const std::vector<std::array<std::string, 3>> cases{
        {"", "no command", "list, timeline, render, pins"},
        {"paint", "'paint'", "list, timeline, render, pins"},
        {"List", "'List'", "list, timeline, render, pins"},
        {"render", "no widget", widgets},
        {"timeline --json", "no widget", widgets},
        {"list timeline", "'timeline'", "unexpected"},
        {"render alarms metric", "'metric'", "unexpected"},
        {"list alarms", "'alarms'", "unexpected"},
        {"render alarms --size 3", "'--size'", "--scale, --format"},
        {"render alarms --fam small", "'--fam'", "--family"},
        {"timeline alarms --format png", "'--format'", "--time-zone"},
        {"list --at 5", "'--at'", "--json"},
        {"render alarms --family large", "--family: 'large'", "systemSmall, systemMedium"},
        {"render alarms --request now", "--request: 'now'", "placeholder, snapshot, timeline"},
        {"render alarms --format gif", "--format: 'gif'", "png, svg, pdf, json, text"},
        {"render alarm --pin a --no-pin", "--no-pin", "--pin"},
        {"pins alarm --at 5", "'--at'", "--id"},
        {"render alarms --at noon", "--at: 'noon'", "seconds since 1970"},
        {"render alarms --at 1e3", "--at: '1e3'", "2024-11-16T16:00:40Z"},
        {"render alarms --locale q", "--locale: 'q'", "en_US"},
        {"render alarms --time-zone Mars/Base", "--time-zone: 'Mars/Base'", "Europe/Berlin"},
        {"render alarms --entry -1", "--entry: '-1'", "from 0"},
        {"render alarms --entry 1.5", "--entry: '1.5'", "from 0"},
        {"render alarms --entry 99999999999999999999", "--entry: '999", "from 0"},
        {"render alarms --scale 0", "--scale: '0'", "from 1 to 4"},
        {"render alarms --scale 4.01", "--scale: '4.01'", "from 1 to 4"},
        {"render alarms --scale nan", "--scale: 'nan'", "from 1 to 4"},
        {"render alarms --scale 2x", "--scale: '2x'", "from 1 to 4"},
        {"render alarms --output", "--output", "FILE"},
        {"render alarms --at", "--at", "TIME"}};
    for (const auto& [words, fault, expected] : cases) {
        EXPECT_THAT(parsed(words), AllOf(testing::StartsWith("fault: "), HasSubstr(fault),
                                         HasSubstr(expected), Not(HasSubstr("\n"))))
            << words;
    }
    for (const std::string option :
         {"--container", "--info", "--request", "--at", "--locale", "--time-zone", "--family",
          "--entry", "--scale", "--format", "--output"}) {
        EXPECT_THAT(parsed({"render", "alarms", option, ""}), HasSubstr(option + ": '' is not "));
        EXPECT_THAT(parsed({"render", "alarms", option + "=", "--redacted"}),
                    HasSubstr(option + ": '' is not "));
    }
}

TEST(CommandLine, ExplainsItself) {
    for (const std::string command : {"", "list ", "timeline ", "render ", "pins "}) {
        EXPECT_THAT(parsed(command + "--version"), HasSubstr("tessary-widgets 0."));
        EXPECT_EQ(parsed(command + "--help"), parsed(command + "-h"));
    }
    EXPECT_THAT(parsed("--help"), AllOf(HasSubstr("list"), HasSubstr("timeline"),
                                        HasSubstr("render"), HasSubstr("Exit status")));
    for (const std::string option :
         {"--container", "--info", "--request", "--preview", "--pin", "--no-pin", "--at",
          "--locale", "--time-zone", "--family", "--entry", "--redacted", "--scale", "--format",
          "--output", "-o"})
        EXPECT_THAT(parsed("render --help"), HasSubstr(option));
}

}  // namespace
}  // namespace tessary::host
