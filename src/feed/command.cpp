#include "feed/command.h"

#include <algorithm>
#include <array>
#include <string_view>

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

constexpr Option ofProgram[] = {help, version};
constexpr Option ofRun[] = {help, version, once, dryRun, container, info, settings};
constexpr Option ofStatus[] = {help, version, json};

}  // namespace option

constexpr const char* statuses =
    "Exit status: 0 a round was made and written, whatever was answered; 1 nothing could\n"
    "be written, another feed runs, or no target could be asked; 2 a wrong call or wrong\n"
    "settings.";

constexpr system::Command commands[] = {
    {.name = "run",
     .purpose =
         "Ask CloudWatch in rounds until the feed is stopped; the command where none is said",
     .options = option::ofRun,
     .footer = statuses,
     .examples = "  tessary-widgets-feed\n"
                 "  tessary-widgets-feed --once\n"
                 "  tessary-widgets-feed --dry-run --settings feed.toml"},
    {.name = "status",
     .purpose = "Say of each target when it last answered, what is wrong, and what to type",
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
     .operandHelp = "run, status or open",
     .examples = "  tessary-widgets-feed help status"},
};

constexpr system::Program program{{.name = "tessary-widgets-feed",
                                   .purpose = "Fetches the widgets' data from CloudWatch.",
                                   .options = option::ofProgram,
                                   .footer = statuses,
                                   .examples = "  tessary-widgets-feed --once\n"
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

Call understand(Reader& read) {
    const Words& words = read.words;
    const std::string_view command{words.command->name};
    const std::size_t most = command == "open" ? 1 : 0;
    if (words.operands.size() > most)
        read.refuse("'" + words.operands[most] + "' is one word too many");
    if (command == "open")
        return OpenCall{words.operands.empty() ? "tessary://alarms" : words.operands[0]};
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
