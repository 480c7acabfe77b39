// A program's options as one table, which parses the words of a call and prints --help.
//
//     constexpr Option json{"json", "", "Print JSON"};
//     constexpr Option output{.name = "output", .value = "FILE", .help = "To there", .letter = 'o'};
//     constexpr Option ofDraw[] = {json, output};
//     constexpr Command commands[] = {{"draw", "Draw something", ofDraw, "WHAT"}};
//     constexpr Program program{.self = {.name = "paint"}, .commands = commands};
//
//     const auto words = parse(program, {"draw", "-oa.png", "house", "--json"});
//     words->value(output)                             // "a.png"
//     words->operands                                  // {"house"}
//     parse(program, {"draw", "--out", "a"}).fault()   // "unknown option '--out' of draw: …"
//     help(program, commands[0])                       // "Draw something\nUsage: paint draw …"
//
// The conventions are GNU's: `--name value`, `--name=value`, `-oFILE`, operands anywhere between,
// and `--` ends the options. Names are written out; an unknown one is answered with the nearest. A
// value that is a word of its own does not begin as an option does, with '-' and no number;
// `--name=-value` may be anything. Where there are commands, `help draw` and `--help draw` ask for
// what `draw --help` says.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/named_cases.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/numbers.h"
#include "platform/foundation/result.h"

namespace tessary::system {

/// How often an option that has a value may be given; or that no other word of the call matters.
enum class Use { once, often, alone };

struct Option {
    const char* name{""};
    const char* value{""};  ///< what its value is called; a flag has none
    const char* help{""};
    const char* group{""};  ///< none: the command's
    char letter{};
    Use use{Use::once};
    std::string (*choices)(){};  ///< the words that it takes, said before the help; none: any
};

struct Command {
    const char* name{""};
    const char* purpose{""};
    std::span<const Option> options{};
    const char* operand{""};  ///< what its operand is called
    const char* operandHelp{""};
    const char* group{"Options"};  ///< of the options that say none
    const char* footer{""};        ///< none: the program's
    const char* examples{""};      ///< the lines that its help ends with
    bool lastCounts{};             ///< of a value given twice, instead of refusing it
};

struct Program {
    Command self{};                       ///< its options stand where no command does
    std::span<const Command> commands{};  ///< none: there are options alone
};

/// The words of a call, each with what it is.
struct Words {
    const Command* command{};  ///< the program itself where it was asked for information
    std::map<std::string_view, std::vector<std::string>> given{};  ///< values, of flags empty ones
    std::vector<std::string> operands{};

    bool has(const Option& option) const { return given.contains(option.name); }
    std::vector<std::string> values(const Option& option) const {
        return has(option) ? given.at(option.name) : std::vector<std::string>{};
    }
    std::optional<std::string> value(const Option& option) const {  ///< the last
        return has(option) ? std::optional{values(option).back()} : std::nullopt;
    }
};

/// Understands the words behind the program's name. A fault is one line that names the word at
/// fault and what was expected. The words keep pointing into the table. For one thread at a time.
foundation::Result<Words> parse(const Program& program, std::vector<std::string> words);

/// What --help prints of a command, or of the program itself; options in lines of 80 columns.
std::string help(const Program& program, const Command& command);

/// Makes values of words, and keeps the first fault.
///
///     Reader read{words};
///     const Asked asked{.at = read(option::at, Date::parse, "a time")};
///     return read.whole(asked);       // or "--at: 'noon' is not a time"
struct Reader {
    const Words& words;
    std::optional<foundation::Fault> fault{};

    void refuse(const std::string& why) {
        if (!fault) fault = foundation::Fault{why};
    }
    void refuse(const Option& option, const std::string& word, const std::string& expected) {
        refuse("--" + std::string{option.name} + ": '" + word + "' is not " + expected);
    }
    /// What `parsed` makes of the value, an optional; none without a value, too.
    template <class Parsed>
    auto operator()(const Option& option, Parsed parsed, const std::string& expected) {
        const auto word = words.value(option);
        auto value = word ? parsed(*word) : std::nullopt;
        if (word && !value) refuse(option, *word, expected);
        return value;
    }
    template <class Case>
    auto oneOf(const Option& option) {
        const auto meant =
            foundation::didYouMean(words.value(option).value_or(""), foundation::namesOf<Case>,
                                   &foundation::NamedCase<Case>::name);
        return (*this)(option, foundation::parse<Case>,
                       "one of " + foundation::knownNames<Case>() + meant);
    }
    template <class Record>
    foundation::Result<Record> whole(Record record) const {
        if (fault) return *fault;
        return record;
    }
};

/// The number that all of a word is, if that is one and within the bounds.
template <class Number, int least, int most>
std::optional<Number> numberWithin(std::string_view word) {
    const auto number = foundation::parsed<Number>(word);
    const bool inRange = number && *number >= least && *number <= most;  // false for no number, too
    return inRange ? number : std::nullopt;
}

}  // namespace tessary::system
