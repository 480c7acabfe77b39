#include "feed/command.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <tuple>

#include "feed/aws/endpoint.h"
#include "platform/system/options.h"

namespace tessary::feed {

using foundation::Result;
using system::Option;
using system::Reader;
using system::Use;
using system::Words;

namespace {

namespace option {

constexpr Option help{"help", "", "Show this help", "", 'h', Use::alone};
constexpr Option version{"version", "", "Show the version", "", 'V', Use::alone};
constexpr Option once{"once", "", "Make one round and end"};
constexpr Option dryRun{"dry-run", "", "Make one round, print what it would write, write nothing"};
constexpr Option json{"json", "", "Print JSON"};
constexpr Option container{"container", "DIR",
                           "The folder that holds widgets/ (default: the group's own)"};
constexpr Option info{"info", "FILE",
                      "The information dictionary, a JSON object (default: the installed one)"};
constexpr Option settings{"settings", "FILE",
                          "What to watch (default: tessary-widgets/feed.toml in the user's "
                          "settings)"};
constexpr Option enable{"enable", "",
                        "Start the user's service, now and at each log-in, and say what of this "
                        "shell's environment it will not see"};
constexpr Option profile{"profile", "PROFILE", "Of this profile (default: all that are watched)"};
constexpr Option region{"region", "REGION", "In this region (default: all that are watched)"};
constexpr Option id{"id", "ID", "What the pin is called (default: made of what it pins)"};
constexpr Option label{"label", "TEXT", "What its widget is headed with (default: the name)"};
constexpr Option statistic{"statistic", "NAME",
                           "Of a metric: Average, Sum, Minimum, Maximum, SampleCount, p99, ... "
                           "(default: Average)"};
constexpr Option period{"period", "SECONDS",
                        "Of a metric: 1, 5, 10, 20, 30 or whole minutes "
                        "(default: 300)"};

constexpr Option ofProgram[] = {help, version};
constexpr Option ofRun[] = {help, version, once, dryRun, container, info, settings};
constexpr Option ofStatus[] = {help, version, json};
constexpr Option ofWatch[] = {help, version, enable, container, info, settings};
constexpr Option ofUnwatch[] = {help, version, container, info, settings};
constexpr Option ofListing[] = {help, version, profile, region, json, container, info, settings};
constexpr Option ofPin[] = {help,      version, profile, region,    id,   label,
                            statistic, period,  json,    container, info, settings};
constexpr Option ofUnpin[] = {help, version, container, info, settings};

}  // namespace option

constexpr const char* statuses =
    "Exit status: 0 a round was made and written, whatever was answered; 1 nothing could\n"
    "be written, another feed runs, or no target could be asked; 2 a wrong call or wrong\n"
    "settings.";

constexpr const char* listingStatuses =
    "Exit status: 0 listed, as far as it was answered; 1 nothing could be asked; 2 a wrong\n"
    "call or wrong settings. At most 10,000 are looked through, shared by all targets.";

constexpr system::Command commands[] = {
    {.name = "run",
     .purpose =
         "Ask CloudWatch in rounds until the feed is stopped; the command where none is said",
     .options = option::ofRun,
     .footer = statuses,
     .examples = "  tessary-widgets-feed\n"
                 "  tessary-widgets-feed --once\n"
                 "  tessary-widgets-feed --dry-run --settings feed.toml"},
    {.name = "watch",
     .purpose = "Add a profile of the AWS tools, and ask it once; without a word the only one",
     .options = option::ofWatch,
     .operand = "PROFILE [REGION...]",
     .operandHelp = "Without a region the profile's own",
     .footer =
         "Exit status: 0 it is watched and was asked; 1 it could not be asked, nothing could\n"
         "be written, or no profile is named and there is more than one; 2 a wrong call or\n"
         "wrong settings.",
     .examples = "  tessary-widgets-feed watch\n"
                 "  tessary-widgets-feed watch prod us-east-1 eu-west-1\n"
                 "  tessary-widgets-feed watch --enable"},
    {.name = "unwatch",
     .purpose = "Take out what watch has added; without a word the only profile",
     .options = option::ofUnwatch,
     .operand = "PROFILE [REGION...]",
     .operandHelp = "Without a region all of the profile's",
     .footer = "Exit status: 0 it is not watched any more; 1 it was not, or nothing could be\n"
               "written; 2 a wrong call or wrong settings.",
     .examples = "  tessary-widgets-feed unwatch prod eu-west-1"},
    {.name = "alarms",
     .purpose = "List the alarms that could be pinned",
     .options = option::ofListing,
     .operand = "TEXT",
     .operandHelp = "Those whose names hold it, in capitals or not",
     .footer = listingStatuses,
     .examples = "  tessary-widgets-feed alarms\n"
                 "  tessary-widgets-feed alarms cpu --profile prod --json"},
    {.name = "metrics",
     .purpose = "List the metrics of the last three hours, which could be pinned",
     .options = option::ofListing,
     .operand = "NAMESPACE [NAME]",
     .operandHelp = "Those of this namespace, and of this name there",
     .footer = listingStatuses,
     .examples = "  tessary-widgets-feed metrics AWS/RDS\n"
                 "  tessary-widgets-feed metrics AWS/RDS CPUUtilization --region us-east-1 --json"},
    {.name = "pin",
     .purpose = "Pin an alarm or a metric for a widget, wherever it is found",
     .options = option::ofPin,
     .operand = "KIND NAME...",
     .operandHelp = "'alarm NAME', or 'metric NAMESPACE NAME [DIMENSION=VALUE...]'; a name that "
                    "begins with - stands behind --",
     .footer = "Exit status: 0 it is pinned; 1 it was found nowhere, or nothing could be written;\n"
               "2 a wrong call or wrong settings. Where a single place is named, which cannot be\n"
               "asked, it is pinned unseen.",
     .examples =
         "  tessary-widgets-feed pin alarm orders-db-cpu-high --label \"Orders database\"\n"
         "  tessary-widgets-feed pin metric AWS/RDS CPUUtilization DBInstanceIdentifier=orders-db\n"
         "  tessary-widgets-feed pin alarm --profile prod --region us-east-1 -- --odd-name"},
    {.name = "unpin",
     .purpose = "Take out what pin has added",
     .options = option::ofUnpin,
     .operand = "ID",
     .operandHelp = "What the pin is called, as status lists it",
     .footer = "Exit status: 0 it is not pinned any more; 1 it was not, or nothing could be\n"
               "written; 2 a wrong call or wrong settings.",
     .examples = "  tessary-widgets-feed unpin prod/us-east-1/orders-db-cpu-high"},
    {.name = "status",
     .purpose = "Say of each target and pin when it last answered, what is wrong, and what to type",
     .options = option::ofStatus,
     .footer = "Exit status: 0 said, 1 nothing is known yet, 2 a wrong call.",
     .examples = "  tessary-widgets-feed status --json"},
    {.name = "open",
     .purpose = "Show the console's page of a widget's link in the browser",
     .options = option::ofProgram,
     .operand = "URL",
     .operandHelp = "tessary://alarms where none is given",
     .footer = "Exit status: that of xdg-open; 1 there is no such page or no xdg-open, 2 it is no\n"
               "widget's link, or the settings are wrong.",
     .examples = "  tessary-widgets-feed open\n"
                 "  tessary-widgets-feed open 'tessary://cloudwatch/metric?pin=orders'"},
    {.name = "help",
     .purpose = "Show this help, or that of a command",
     .options = option::ofProgram,
     .operand = "COMMAND",
     .operandHelp = "run, watch, unwatch, alarms, metrics, pin, unpin, open or status",
     .examples = "  tessary-widgets-feed help pin"},
};

constexpr system::Program program{{.name = "tessary-widgets-feed",
                                   .purpose = "Fetches the widgets' data from CloudWatch.",
                                   .options = option::ofProgram,
                                   .footer = statuses,
                                   .examples = "  tessary-widgets-feed watch\n"
                                               "  tessary-widgets-feed pin alarm NAME\n"
                                               "  tessary-widgets-feed status"},
                                  commands};

/// Whether the first word belongs to a command that is not said.
bool beginsWithOption(const std::vector<std::string>& words) {
    if (words.empty()) return true;
    constexpr std::array<std::string_view, 4> ofProgram{"-h", "--help", "-V", "--version"};
    return words[0].starts_with('-') && std::ranges::find(ofProgram, words[0]) == ofProgram.end();
}

std::optional<std::filesystem::path> pathOf(Reader& read, const Option& option) {
    const auto word = read.words.value(option);
    if (!word) return std::nullopt;
    if (word->empty()) read.refuse(option, *word, "a path");
    return *word;
}

Given givenOf(Reader& read) {
    return {pathOf(read, option::container), pathOf(read, option::info),
            pathOf(read, option::settings)};
}

RoundsCall roundsOf(Reader& read) {
    const bool once = read.words.has(option::once), dry = read.words.has(option::dryRun);
    if (once && dry) read.refuse("expected --once or --dry-run, not both");
    using Mode = RoundsCall::Mode;
    return {.mode = dry ? Mode::dryRun : once ? Mode::once : Mode::endless, .given = givenOf(read)};
}

/// The operands, of which there may be so many; one that is missing is empty.
class Operands {
public:
    Operands(Reader& read, std::size_t most) : read_(read), words_(read.words.operands) {
        if (words_.size() > most) read.refuse("'" + words_[most] + "' is one word too many");
        for (const auto& word : words_)
            if (word.empty()) read.refuse("an empty word names nothing");
    }
    std::string at(std::size_t place) const { return place < words_.size() ? words_[place] : ""; }
    std::string wanted(std::size_t place, const std::string& what) const {
        if (place >= words_.size()) read_.refuse("expected " + what);
        return at(place);
    }
    std::vector<std::string> from(std::size_t place) const {
        const auto first = std::min(place, words_.size());
        return {words_.begin() + static_cast<std::ptrdiff_t>(first), words_.end()};
    }

private:
    Reader& read_;
    const std::vector<std::string>& words_;
};

constexpr std::size_t any = std::numeric_limits<std::size_t>::max();

/// A text that is not empty; without the option an empty one.
std::string textOf(Reader& read, const Option& option) {
    auto word = read.words.value(option);
    if (word && word->empty()) read.refuse(option, *word, "a text");
    return word.value_or("");
}

void expectRegion(Reader& read, const std::string& word) {
    if (!aws::isRegion(word)) read.refuse("'" + word + "' is no region");
}

rounds::Place placeOf(Reader& read) {
    rounds::Place place{textOf(read, option::profile), textOf(read, option::region)};
    if (!place.region.empty()) expectRegion(read, place.region);
    return place;
}

template <class WatchOrUnwatch>
WatchOrUnwatch watchOf(Reader& read) {
    const Operands words{read, any};
    WatchOrUnwatch call{.profile = words.at(0), .regions = words.from(1)};
    for (const auto& region : call.regions) expectRegion(read, region);
    call.given = givenOf(read);
    return call;
}

AlarmsCall alarmsOf(Reader& read) {
    const Operands words{read, 1};
    return {words.at(0), placeOf(read), read.words.has(option::json), givenOf(read)};
}

MetricsCall metricsOf(Reader& read) {
    const Operands words{read, 2};
    const auto named = [&](std::size_t place) {
        return words.at(place).empty() ? std::nullopt : std::optional{words.at(place)};
    };
    return {named(0), named(1), placeOf(read), read.words.has(option::json), givenOf(read)};
}

void addDimension(Reader& read, settings::MetricPin& pin, const std::string& word) {
    const auto equals = word.find('=');
    if (equals == 0 || equals == word.npos || equals + 1 == word.size())
        return read.refuse("'" + word + "' is not DIMENSION=VALUE");
    if (!pin.dimensions.emplace(word.substr(0, equals), word.substr(equals + 1)).second)
        read.refuse("'" + word.substr(0, equals) + "' is given twice");
}

settings::MetricPin metricOf(Reader& read, const Operands& words) {
    settings::MetricPin pin{.namespace_ = words.wanted(1, "the metric's namespace"),
                            .name = words.wanted(2, "the metric's name")};
    for (const auto& word : words.from(3)) addDimension(read, pin, word);
    if (read.words.has(option::statistic)) pin.statistic = textOf(read, option::statistic);
    const auto periodOf = [](std::string_view word) {
        const auto seconds = foundation::parsed<std::int64_t>(word);
        return seconds && settings::isPeriod(*seconds) ? seconds : std::nullopt;
    };
    const auto period = read(option::period, periodOf, "1, 5, 10, 20, 30 or whole minutes");
    if (period) pin.period = *period;
    return pin;
}

PinCall pinOf(Reader& read) {
    const Operands words{read, any};
    const auto kind = words.wanted(0, "alarm or metric, and what is to be pinned");
    PinCall call{.json = read.words.has(option::json), .given = givenOf(read)};
    if (kind == "metric") {
        call.pin = metricOf(read, words);
    } else if (kind == "alarm") {
        for (const auto* option : {&option::statistic, &option::period})
            if (read.words.has(*option))
                read.refuse("--" + std::string{option->name} + " is for metrics");
        call.pin = settings::AlarmPin{.name = words.wanted(1, "the alarm's name")};
        if (!words.at(2).empty()) read.refuse("'" + words.at(2) + "' is one word too many");
    } else {
        read.refuse("'" + kind + "' cannot be pinned: expected alarm or metric");
    }
    const auto place = placeOf(read);
    const auto id = textOf(read, option::id), label = textOf(read, option::label);
    const auto complete = [&](auto& pin) {
        std::tie(pin.profile, pin.region) = std::tie(place.profile, place.region);
        std::tie(pin.id, pin.label) = std::tie(id, label);
    };
    std::visit(complete, call.pin);
    return call;
}

Call understand(Reader& read) {
    const Words& words = read.words;
    const std::string_view command{words.command->name};
    if (command == "alarms") return alarmsOf(read);
    if (command == "metrics") return metricsOf(read);
    if (command == "pin") return pinOf(read);
    if (command == "unwatch") return watchOf<UnwatchCall>(read);
    if (command == "watch") {
        auto call = watchOf<WatchCall>(read);
        call.enable = words.has(option::enable);
        return call;
    }
    const Operands operands{read, command == "unpin" || command == "open" ? 1U : 0U};
    if (command == "open")
        return OpenCall{operands.at(0).empty() ? "tessary://alarms" : operands.at(0)};
    if (command == "unpin") return UnpinCall{operands.wanted(0, "the pin's id"), givenOf(read)};
    if (command == "status") return StatusCall{words.has(option::json)};
    return roundsOf(read);
}

Result<Call> callOf(const Words& words) {
    if (words.has(option::help)) return Call{Information{system::help(program, *words.command)}};
    if (words.has(option::version))
        return Call{Information{"tessary-widgets-feed " TESSARY_VERSION "\n"}};
    Reader read{words};
    const Call call = understand(read);
    return read.whole(call);
}

}  // namespace

Result<Call> parseCall(std::vector<std::string> words) {
    if (beginsWithOption(words)) words.insert(words.begin(), "run");
    return system::parse(program, std::move(words)).andThen(callOf);
}

}  // namespace tessary::feed
