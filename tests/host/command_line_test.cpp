#include "host/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"
#include "support/table.h"

namespace tessary::host {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string printed(const RequestOptions& request) {
    const auto& [container, info, which, preview, pin, at, locale, timeZone] = request;
    const bool chosen = pin.kind == PinChoice::Kind::identifier;
    return " container=" + container.value_or("?").string() +
           " info=" + info.value_or("?").string() +
           " request=" + std::string{foundation::name(which)} + (preview ? " preview" : "") +
           (chosen                              ? " pin=" + pin.identifier
            : pin.kind == PinChoice::Kind::none ? " unpinned"
                                                : "") +
           " at=" + (at ? std::to_string(at->seconds) : "?") + " locale=" + locale.value_or("?") +
           " zone=" + timeZone.value_or("?");
}

/// A call as one line that holds all of it.
struct CallPrinter {
    std::string operator()(const ListCommand& list) const {
        return list.json ? "list json" : "list";
    }
    std::string operator()(const TimelineCommand& timeline) const {
        const auto& [widget, request, json] = timeline;
        return "timeline " + widget + printed(request) + (json ? " json" : "");
    }
    std::string operator()(const RenderCommand& render) const {
        const auto& [family, entry, redacted, scale, format, output] = render.picture;
        return "render " + render.widget + printed(render.request) +
               " family=" + std::string{foundation::name(family)} +
               " entry=" + std::to_string(entry) + (redacted ? " redacted" : "") +
               " scale=" + std::to_string(scale) +
               " format=" + std::string{foundation::name(format)} +
               " output=" + output.value_or("?").string();
    }
    std::string operator()(const PinsCommand& pins) const {
        std::string ids;
        for (const std::string& id : pins.ids) ids += " id=" + id;
        return "pins " + pins.widget + printed(pins.request) + ids + (pins.json ? " json" : "");
    }
    std::string operator()(const ServeCommand& serve) const {
        return "serve" + printed(serve.request) + (serve.requireSandbox ? " sandboxed" : "");
    }
    std::string operator()(const CheckCommand& check) const {
        return "check" + printed(check.request) + (check.json ? " json" : "") +
               (check.watch ? " watch" : "");
    }
    std::string operator()(const Information& information) const { return information.text; }
    std::string operator()(const UsageFault& fault) const { return "fault: " + fault.message; }
};

std::string parsed(const std::vector<std::string>& words) {
    return std::visit(CallPrinter{}, parseCommandLine(words));
}
std::string parsed(const std::string& words) { return parsed(foundation::words(words)); }

const std::string requestDefaults = " container=? info=? request=timeline at=? locale=? zone=?";
const std::string renderDefaults =
    requestDefaults + " family=systemSmall entry=0 scale=2.000000 format=png output=?";

TEST(CommandLine, KnowsItsCommands) {
    EXPECT_EQ(parsed("list") + parsed("list --json"), "listlist json");
    EXPECT_EQ(parsed("timeline metric"), "timeline metric" + requestDefaults);
    EXPECT_EQ(parsed("timeline --json alarms"), "timeline alarms" + requestDefaults + " json");
    EXPECT_EQ(parsed("pins alarm --json"), "pins alarm" + requestDefaults + " json");
    EXPECT_EQ(parsed({"pins", "--id", "b", "metric", "--id=a", "--id", ""}),
              "pins metric" + requestDefaults + " id=b id=a id=");
    EXPECT_EQ(parsed("serve"), "serve" + requestDefaults);
    EXPECT_EQ(
        parsed("serve --require-sandbox --container /c --locale de_DE --at 5"),
        "serve container=/c info=? request=timeline at=5.000000 locale=de_DE zone=? sandboxed");
    EXPECT_EQ(parsed("render x.y"), "render x.y" + renderDefaults);
    EXPECT_EQ(parsed("check"), "check" + requestDefaults);
    EXPECT_EQ(parsed("check --watch --json --json"), "check" + requestDefaults + " json watch");
}

TEST(CommandLine, TakesEveryOptionInBothFormsOnBothSidesOfTheWidget) {
    // An option and its value; what stands in the line above for it, and what comes instead.
    for (const auto& row : table(R"(
        --container | a b                       | container=?        | container=a b
        --info      | -x.plist                  | info=?             | info=-x.plist
        --request   | placeholder               | request=timeline   | request=placeholder
        --request   | snapshot                  | request=timeline   | request=snapshot
        --pin       | orders:cpu                | at=?               | pin=orders:cpu at=?
        --at        | 1731772840.5              | at=?               | at=1731772840.500000
        --at        | -3                        | at=?               | at=-3.000000
        --at        | 2024-11-16T17:00:40+01:00 | at=?               | at=1731772840.000000
        --locale    | de-DE                     | locale=?           | locale=de_DE
        --locale    | ar_EG.UTF-8               | locale=?           | locale=ar_EG
        --time-zone | Europe/Berlin             | zone=?             | zone=Europe/Berlin
        --family    | medium                    | family=systemSmall | family=systemMedium
        --family    | systemMedium              | family=systemSmall | family=systemMedium
        --entry     | 4                         | entry=0            | entry=4
        --scale     | 1                         | scale=2            | scale=1
        --scale     | 2.5                       | scale=2.0          | scale=2.5
        --scale     | 4                         | scale=2            | scale=4
        --format    | text                      | format=png         | format=text
        -o          | a.png                     | output=?           | output=a.png
        --output    | b.png/c.svg               | png output=?       | svg output=b.png/c.svg
        --output    | d.pdf                     | png output=?       | pdf output=d.pdf
        --output    | e.json                    | png output=?       | json output=e.json
        --output    | f.txt                     | png output=?       | text output=f.txt
        --output    | H.SVG                     | png output=?       | svg output=H.SVG
        --output    | g.gif                     | output=?           | output=g.gif
        --output    | -                         | output=?           | output=?)")) {
        const std::string &option = row.at(0), &value = row.at(1), &former = row.at(2);
        std::string expected = "render alarms" + renderDefaults;
        expected.replace(expected.find(former), former.size(), row.at(3));
        EXPECT_EQ(parsed({"render", "alarms", option, value}), expected);
        EXPECT_EQ(parsed({"render", option, value, "alarms"}), expected);
        const std::string joined = option + (option.starts_with("--") ? "=" : "") + value;
        EXPECT_EQ(parsed({"render", joined, "alarms"}), expected);
    }
    EXPECT_THAT(parsed("render alarms --preview --redacted --no-pin"),
                AllOf(HasSubstr(" preview "), HasSubstr(" redacted "), HasSubstr(" unpinned ")));
    EXPECT_THAT(parsed({"timeline", "alarm", "--pin", ""}), HasSubstr(" pin= at"));
    EXPECT_THAT(parsed("render alarms -o a.svg --format json"), HasSubstr("format=json output=a"));
}

TEST(CommandLine, NamesTheWordAtFaultAndWhatWasExpected) {
    for (const auto& row : table(R"(
                                                      | no command            | list, timeline, render, pins, serve, check
        paint                                         | 'paint'               | list, timeline, render, pins, serve, check
        List                                          | 'List'                | list, timeline, render, pins, serve, check
        render                                        | no widget             | alarms, alarm, metric
        timeline --json                               | no widget             | or a kind identifier
        list timeline                                 | 'timeline'            | unexpected
        render alarms metric                          | 'metric'              | unexpected
        list alarms                                   | 'alarms'              | unexpected
        render alarms --size 3                        | '--size'              | --scale, --format
        render alarms --fam small                     | '--fam'               | --family
        timeline alarms --format png                  | '--format'            | --time-zone
        list --at 5                                   | '--at'                | --json
        pins alarm --at 5                             | '--at'                | --id
        render alarms --family large                  | --family: 'large'     | systemSmall, systemMedium
        render alarms --request now                   | --request: 'now'      | placeholder, snapshot
        render alarms --format gif                    | --format: 'gif'       | png, svg, pdf, json, text
        render alarm --pin a --no-pin                 | --pin 'a' and --no-pin | one of them
        render alarm --at 1 --scale 2 --at 2          | --at is given twice   | expected once
        check --info a --info b --info c              | --info is given 3     | expected once
        check alarms                                  | 'alarms'              | unexpected
        --json list                                   | '--json'              | --help, --version, or one of list
        render alarms --at 1e3                        | --at: '1e3'           | seconds since 1970
        render alarms --at noon                       | --at: 'noon'          | 2024-11-16T16:00:40Z
        render alarms --locale q                      | --locale: 'q'         | en_US
        render alarms --time-zone Mars/Base           | 'Mars/Base'           | Europe/Berlin
        render alarms --entry -1                      | --entry: '-1'         | from 0
        render alarms --entry 1.5                     | --entry: '1.5'        | from 0
        render alarms --entry 99999999999999999999    | --entry: '9999999999  | from 0
        render alarms --scale 0.99                    | --scale: '0.99'       | from 1 to 4
        render alarms --scale 4.01                    | --scale: '4.01'       | from 1 to 4
        render alarms --scale nan                     | --scale: 'nan'        | from 1 to 4
        render alarms --scale 2x                      | --scale: '2x'         | from 1 to 4
        render alarms --output                        | --output              | FILE)"))
        EXPECT_THAT(parsed(row.at(0)), AllOf(testing::StartsWith("fault: "), HasSubstr(row.at(1)),
                                             HasSubstr(row.at(2)), Not(HasSubstr("\n"))));
    for (const auto& option : foundation::words("--container --info --request --at --locale "
                                                "--time-zone --family --entry --scale --format "
                                                "--output")) {
        const std::string fault = option + ": '' is not ";
        EXPECT_THAT(parsed({"render", "alarms", option, ""}), HasSubstr(fault));
        EXPECT_THAT(parsed({"render", "alarms", option + "=", "--redacted"}), HasSubstr(fault));
    }
}

TEST(CommandLine, ExplainsItself) {
    for (const std::string command : {"", "list ", "timeline ", "render ", "pins ", "check "}) {
        EXPECT_EQ(parsed(command + "--version"), "tessary-widgets " TESSARY_VERSION "\n");
        EXPECT_EQ(parsed(command + "--help"), parsed(command + "-h"));
        EXPECT_THAT(parsed("--help"), HasSubstr(command));
    }
    for (const auto& option : foundation::words(
             "--container --info --request --preview --pin --no-pin --at --locale --time-zone "
             "--family --entry --redacted --scale --format --output -o"))
        EXPECT_THAT(parsed("render --help"), HasSubstr(option));
}

}  // namespace
}  // namespace tessary::host
