#include "platform/system/options.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::system {
namespace {

constexpr Option aid{"help", "", "Say this", "Options", 'h', Use::alone};
constexpr Option size{
    "size", "N", "How large it is to be, in feet or in yards (default: 7, but not of an elephant)",
    "Look"};
constexpr Option tag{"tag", "WORD", "written on it", "Look", 't', Use::often, [] {
                         return std::string{"mine or yours"};
                     }};
constexpr Option bold{.name = "bold", .help = "With thick lines", .letter = 'b'};
constexpr Option ofDraw[] = {aid, size, bold, tag};
constexpr Option ofWipe[] = {size, aid};
constexpr Command commands[] = {
    {"draw", "Draw something", ofDraw, "WHAT", "a house"},
    {"wipe", "Begin anew", ofWipe, "", "", "How", "All is gone.", "  paint wipe", true},
};
constexpr Option ofPaint[] = {aid};
constexpr Program paint{{"paint", "Paints.", ofPaint, "", "", "", "Have fun."}, commands};
constexpr Program alone{{"alone", "Draws.", ofDraw}};

std::string understood(const Program& program, const std::vector<std::string>& call) {
    const auto words = parse(program, call);
    if (!words) return "fault: " + words.fault().message();
    if (words->has(aid)) return help(program, *words->command);
    std::string text = words->command->name;
    for (const std::string& operand : words->operands) text += " [" + operand + "]";
    if (words->has(bold)) text += " bold";
    for (const std::string& each : words->values(tag)) text += " tag=" + each;
    Reader read{*words};
    if (const auto number = read(size, numberWithin<int, -5, 20>, "a number from -5 to 20"))
        text += " size=" + std::to_string(*number);
    return read.fault ? "fault: " + read.fault->message() : text;
}

/// '' stands for an empty word. All calls are parsed by one process, one after the other.
TEST(Options, TellEachWordOrNameTheOneAtFault) {
    setVariable("POSIXLY_CORRECT", "1");  // takes nothing away from a program's own conventions
    expectTranscript("options.txt", [](const std::string& line) {
        auto call = words(line);
        for (auto& word : call) word = word == "''" ? "" : word;
        const bool isAlone = !call.empty() && call.front() == "alone";
        if (isAlone) call.erase(call.begin());
        return understood(isAlone ? alone : paint, call);
    });
}

}  // namespace
}  // namespace tessary::system
