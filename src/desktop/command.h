// What a call of the program asks for, and the commands that work on the placed widgets.
//
//     const auto call = parseCall({"--add", "alarm", "--position", "40,60"}, folder);
//     if (!call) return note(call.fault().message()), 2;
//     carryOut(*call, widgets, monitors, kinds)      // {.status = 0, .output = "1\n"}
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/places/kinds.h"
#include "platform/foundation/result.h"

namespace tessary::desktop {

/// An edit that changes nothing by itself opens the editor.
enum class Action {
    start,
    list,
    add,
    remove,
    edit,
    openEditor,
    openLink,
    gallery,
    reload,
    quit,
    help,
    version
};

struct Command {
    Action action{Action::start};
    bool json{};                           ///< for list
    std::string widget{};                  ///< for add: a kind, or what it is called for short
    int number{};                          ///< for remove, edit, openEditor, openLink
    std::optional<std::string> family{};   ///< for add and edit
    std::optional<std::string> pin{};      ///< for add and edit
    std::optional<places::Place> place{};  ///< likewise; one of no monitor leaves it to the desktop
    std::string container{};               ///< an absolute path; empty where not given
    std::string info{};                    ///< likewise
};

/// Understands the words after the program's name; relative paths are of that folder. A fault is
/// one line: the word at fault and what was expected.
foundation::Result<Command> parseCall(const std::vector<std::string>& words,
                                      const std::string& folder);

/// What --help prints.
std::string helpText();

struct Outcome {
    int status{};             ///< 0; 1 where it could not be done, 2 for a word that is not known
    std::string output{};     ///< for standard output
    std::string complaint{};  ///< for standard error, without a line's end
};

/// Whether it takes the kinds of widgets to do it.
bool needsKinds(const Command& command);

/// Does what list, add, remove and edit ask for; for openEditor and openLink, says whether there is
/// such a widget, and a pin to choose. Where it could not, the widgets are what they were. A new
/// widget comes to the first of the monitors, without a place to a free spot.
Outcome carryOut(const Command& command, std::vector<places::PlacedWidget>& widgets,
                 const std::vector<places::Monitor>& monitors, const places::Kinds& kinds);

}  // namespace tessary::desktop
