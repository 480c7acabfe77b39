#include "platform/system/options.h"

#include <algorithm>
#include <getopt.h>

namespace tessary::system {

using foundation::didYouMean;
using foundation::Fault;
using foundation::Result;
using Text = std::string;

namespace {

Text longName(const Option& option) { return Text{"--"} + option.name; }

Text joined(std::span<const Option> options) { return foundation::joined(options, ", ", longName); }

/// A name is matched whole, which getopt_long() does not ask for.
const Option* optionOf(const Command& command, std::string_view word, int letter) {
    const auto name = word.substr(2, word.find('=') - 2);
    for (const Option& option : command.options)
        if (word.starts_with("--") ? option.name == name : option.letter == letter) return &option;
    return nullptr;
}

/// A number may be negative, and no option begins with a digit.
bool beginsAsOption(std::string_view word) {
    const auto first = word.find_first_not_of('-');
    const bool isNumber = first != word.npos && Text{".0123456789"}.find(word[first]) != word.npos;
    return word.starts_with('-') && word != "-" && !isNumber;
}

/// The command that is called, or the program itself.
Result<const Command*> calledCommand(const Program& program, const std::vector<Text>& words) {
    if (program.commands.empty()) return &program.self;
    const Text commands = foundation::joined(program.commands, ", ", &Command::name);
    if (words.empty()) return Fault{"no command given: expected " + commands};
    const Text& word = words.front();
    for (const Command& command : program.commands)
        if (word == command.name) return &command;
    if (!word.starts_with('-'))
        return Fault{"unknown command '" + word + "': expected " + commands +
                     didYouMean(word, program.commands, &Command::name)};
    if (word != "-" && optionOf(program.self, word, word[1])) return &program.self;
    return Fault{"unexpected option '" + word + "' before a command: expected " +
                 joined(program.self.options) + ", or one of " + commands};
}

constexpr int plainWord = 1, valueMissing = ':', refused = '?';  // what getopt_long() says
constexpr const char* says = "-:";                               // when it is to say all of these

/// The option that a word gives, with its value in `optarg`.
Result<const Option*> givenOption(const Command& command, const Text& word, int code,
                                  bool valueIsWord) {
    const bool isFault = code == refused || code == valueMissing;
    const Option* option = optionOf(command, word, isFault ? ::optopt : code);
    if (!option)
        return Fault{"unknown option '" + word + "' of " + command.name + ": expected " +
                     joined(command.options) +
                     didYouMean(word.substr(0, word.find('=')), command.options, longName)};
    const Text name = longName(*option);
    if (code == refused)
        return Fault{"unexpected value in '" + word + "': " + name + " takes none"};
    if (code == valueMissing || (valueIsWord && beginsAsOption(::optarg)))
        return Fault{name + " lacks its value: expected " + option->value};
    return option;
}

Result<Words> once(Words words) {
    for (const Option& option : words.command->options) {
        const auto count = words.values(option).size();
        if (count < 2 || !*option.value || option.use == Use::often) continue;
        const Text times = count == 2 ? "twice" : std::to_string(count) + " times";
        return Fault{longName(option) + " is given " + times + ", expected once"};
    }
    return words;
}

/// The words behind the first, which is the command's name.
Result<Words> scanned(const Command& command, std::vector<Text> words) {
    Text letters = says;
    std::vector<::option> names;
    for (const Option& option : command.options) {
        names.push_back({option.name, *option.value ? required_argument : no_argument, nullptr, 0});
        if (option.letter) letters += option.letter + Text{*option.value ? ":" : ""};
    }
    names.push_back({});
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (Text& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const auto count = static_cast<int>(words.size());
    Words found{&command};
    ::opterr = ::optind = 0;  // says nothing itself, begins anew
    for (std::size_t at = 1;; at = static_cast<std::size_t>(::optind)) {
        const int code =
            ::getopt_long(count, pointers.data(), letters.c_str(), names.data(), nullptr);
        if (code == -1) break;
        const bool valueIsWord = ::optarg && ::optarg == pointers[at + 1];
        if (code == plainWord) {
            found.operands.emplace_back(::optarg);
        } else {
            const auto option = givenOption(command, words[at], code, valueIsWord);
            if (!option) return option.fault();
            found.given[(*option)->name].emplace_back(::optarg ? ::optarg : "");
            if ((*option)->use == Use::alone) return found;
        }
    }
    found.operands.insert(found.operands.end(), words.begin() + ::optind, words.end());
    return command.lastCounts ? found : once(std::move(found));
}

Text helpOf(const Option& option) {
    return (option.choices != nullptr ? option.choices() + " " : "") + option.help;
}

constexpr std::size_t helpColumn = 30, lastColumn = 80;

/// Broken at blanks, so that it stays within the columns; the further lines begin below the first.
Text broken(Text text) {
    const Text next = "\n" + Text(helpColumn, ' ');
    constexpr std::size_t room = lastColumn - helpColumn;
    for (std::size_t start = 0; text.size() > start + room;) {
        const auto blank = text.rfind(' ', start + room);
        if (blank == text.npos || blank <= start) break;
        text.replace(blank, 1, next);
        start = blank + next.size();
    }
    return text;
}

Text row(Text names, const Text& help) {
    names.resize(std::max<std::size_t>(helpColumn - 2, names.size() + 1), ' ');
    return "  " + names + broken(help) + "\n";
}

Text optionRows(const Command& command) {
    std::vector<std::pair<Text, Text>> groups;  // titles and rows
    for (const Option& option : command.options) {
        const Text title = *option.group ? option.group : command.group;
        auto group = std::ranges::find(groups, title, &std::pair<Text, Text>::first);
        if (group == groups.end()) group = groups.insert(group, {title, ""});
        const Text names = (option.letter ? Text{'-', option.letter, ','} : "") + longName(option);
        group->second += row(names + (*option.value ? " " : "") + option.value, helpOf(option));
    }
    Text text;
    for (const auto& [title, rows] : groups)
        text += (text.empty() ? "\n" : "\n\n") + title + ":\n" + rows;
    return text;
}

/// Of the words before a command's own, what can stand behind its name is put there.
std::vector<Text> reordered(const Program& program, std::vector<Text> words) {
    const auto first = [&](std::string_view word) { return !words.empty() && words[0] == word; };
    const auto wordFollows = [&] { return words.size() > 1 && !words[1].starts_with('-'); };
    if (program.commands.empty()) return words;
    if (first("--") && wordFollows()) words.erase(words.begin());
    if (first("help")) words[0] = "--help";
    if ((first("--help") || first("-h")) && wordFollows()) std::swap(words[0], words[1]);
    return words;
}

}  // namespace

Result<Words> parse(const Program& program, std::vector<std::string> words) {
    words = reordered(program, std::move(words));
    return calledCommand(program, words).andThen([&](const Command* command) {
        if (command == &program.self) words.insert(words.begin(), command->name);
        return scanned(*command, std::move(words));
    });
}

std::string help(const Program& program, const Command& command) {
    const bool isProgram = &command == &program.self;
    const auto commands = isProgram ? program.commands : std::span<const Command>{};
    const Text operand = command.operand;
    Text text = Text{command.purpose} + "\nUsage: " + program.self.name;
    if (!isProgram) text += Text{" "} + command.name;
    text += commands.empty() ? " [OPTIONS]" : " [OPTIONS] [SUBCOMMAND]";
    if (!operand.empty())
        text += " [" + operand + "]\n\nPositionals:\n" + row(operand, command.operandHelp);
    text += (operand.empty() ? "\n" : "") + optionRows(command);
    if (!commands.empty()) text += "\nSubcommands:\n";
    for (const Command& each : commands) text += row(each.name, each.purpose);
    const Text footer = *command.footer ? command.footer : program.self.footer;
    if (!footer.empty()) text += "\n" + footer + "\n";
    if (*command.examples) text += "\nExamples:\n" + Text{command.examples} + "\n";
    return text;
}

}  // namespace tessary::system
