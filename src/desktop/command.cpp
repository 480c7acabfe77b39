#include "desktop/command.h"

#include <algorithm>
#include <gio/gio.h>

#include "desktop/glib/handles.h"
#include "desktop/places/state.h"
#include "platform/foundation/utf8.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/options.h"

namespace tessary::desktop {

using namespace glib;
using namespace places;
using system::Option;
using system::Reader;
using system::Words;

namespace {

namespace option {

constexpr Option list{"list", "", "Print the widgets on the desktop"};
constexpr Option json{"json", "", "With --list: print them as JSON"};
constexpr Option add{"add", "WIDGET", "Add a widget, one that tessary-widgets list names"};
constexpr Option edit{"edit", "N",
                      "Change widget N: its --pin, --family or --position; without, choose a pin"};
constexpr Option open{"open", "N", "Open the link of widget N, as a click does"};
constexpr Option remove{"remove", "N", "Remove widget N"};
constexpr Option family{"family", "FAMILY", "The size, one of the widget's"};
constexpr Option pin{"pin", "ID", "What it is to show of what its editor offers"};
constexpr Option position{"position", "X,Y",
                          "Points from the left and the top, -X,-Y from the right and below"};
constexpr Option gallery{"gallery", "", "Choose widgets to add in a window"};
constexpr Option reload{"reload", "", "Ask for all widgets anew"};
constexpr Option quit{"quit", "", "End the desktop that runs"};
constexpr Option container{"container", "DIR", "The folder that holds widgets/"};
constexpr Option info{"info", "FILE", "The extension's information dictionary"};
constexpr Option help{"help", "", "Print this"};
constexpr Option version{"version", "", "Print the version"};

constexpr Option all[] = {list,     json,    add,    edit, open,      remove, family, pin,
                          position, gallery, reload, quit, container, info,   help,   version};

}  // namespace option

constexpr system::Program program{{.name = "tessary-widgets-desktop",
                                   .purpose = "Shows the widgets on the desktop.",
                                   .options = option::all,
                                   .lastCounts = true}};

Action actionOf(Reader& read) {
    const std::pair<Option, Action> actions[] = {
        {option::help, Action::help},     {option::version, Action::version},
        {option::list, Action::list},     {option::add, Action::add},
        {option::remove, Action::remove}, {option::edit, Action::openEditor},
        {option::open, Action::openLink}, {option::gallery, Action::gallery},
        {option::reload, Action::reload}, {option::quit, Action::quit},
    };
    auto action = Action::start;
    int count = 0;
    for (const auto& [option, asked] : actions)
        if (read.words.has(option)) ++count, action = asked;
    if (count > 1)
        read.refuse(
            "expected one of --list, --add, --remove, --edit, --open, --gallery, "
            "--reload and --quit, not " +
            std::to_string(count));
    return action;
}

void refuseStrayOptions(Reader& read, Action action) {
    const bool edits = action == Action::add || action == Action::openEditor;
    const auto needs = [&](const Option& option, bool isThere, const std::string& expected) {
        if (read.words.has(option) && !isThere)
            read.refuse("--" + std::string{option.name} + ": expected " + expected + " with it");
    };
    needs(option::json, action == Action::list, "--list");
    needs(option::position, edits, "--add or --edit");
    needs(option::family, edits, "--add or --edit");
    needs(option::pin, edits, "--add or --edit");
}

int widgetNumber(Reader& read) {
    int number{};
    for (const auto& option : {option::remove, option::open, option::edit})
        number = read(option, system::numberWithin<int, 1, 100'000>, "a widget's number")
                     .value_or(number);
    return number;
}

Command understand(Reader& read, const std::string& folder) {
    const Words& words = read.words;
    if (!words.operands.empty())
        read.refuse("call: '" + words.operands[0] + "' is not an option that --help names");
    Command command{.action = actionOf(read), .json = words.has(option::json)};
    refuseStrayOptions(read, command.action);
    command.widget = words.value(option::add).value_or("");
    command.family = words.value(option::family);
    command.pin = words.value(option::pin);
    if (command.pin && !foundation::isUTF8(*command.pin))
        read.refuse(option::pin, Text{g_utf8_make_valid(command.pin->c_str(), -1)}.get(), "UTF-8");
    command.place = read(option::position, parsePlace, "X,Y in points from the edges");
    command.number = widgetNumber(read);
    const bool changes = command.pin || command.family || command.place;
    if (command.action == Action::openEditor && changes) command.action = Action::edit;
    const auto path = [&](const Option& option) {
        const auto word = words.value(option);
        if (!word) return std::string{};
        return std::string{Text{g_canonicalize_filename(word->c_str(), folder.c_str())}.get()};
    };
    command.container = path(option::container);
    command.info = path(option::info);
    return command;
}

/// Fit for a terminal, and not cut.
std::string whole(const std::string& text) { return foundation::visible(text, text.size()); }

std::string listed(const std::vector<PlacedWidget>& widgets, const Kinds& kinds) {
    std::string lines;
    for (const auto& [number, kind, family, pin, place] : widgets)
        lines += std::to_string(number) + "  " + whole(nameOf(kind, kinds)) + "  " +
                 whole(family.name) + "  " + describe(place) + (pin ? "  " + whole(*pin) : "") +
                 "\n";
    return lines;
}

Outcome unknown(const std::string& option, const std::string& word, const std::string& known) {
    return {.status = 2, .complaint = option + ": '" + word + "' is not one of " + known};
}

Outcome add(const Command& command, std::vector<PlacedWidget>& widgets,
            const std::vector<Monitor>& monitors, const Kinds& kinds) {
    const auto kind = kindNamed(kinds, command.widget);
    if (!kind) return unknown("--add", command.widget, knownKinds(kinds));
    if (command.pin && !kind->takesPin)
        return {.status = 2,
                .complaint = "--pin: expected a widget that shows a pin, one of " +
                             knownKinds(takingPins(kinds))};
    const auto family = familyNamed(*kind, command.family.value_or(kind->sizes.front().name));
    if (!family) return unknown("--family", *command.family, knownFamilies(*kind));
    int number = 1;
    for (const auto& widget : widgets) number = std::max(number, widget.number + 1);
    auto place = command.place ? *command.place : freePlace(widgets, family->size, monitors);
    if (!place.monitor) place.monitor = monitors.front().name;
    widgets.push_back({number, kind->kind, *family, command.pin, place});
    return {.output = std::to_string(number) + "\n"};
}

/// Moves a widget; on its monitor, where the new place names none.
void move(PlacedWidget& widget, Place place) {
    if (!place.monitor) place.monitor = widget.place.monitor;
    widget.place = place;
}

Outcome edit(const Command& command, PlacedWidget& widget, const Kind* kind) {
    const bool isOfPin = command.pin || command.action == Action::openEditor;
    if (isOfPin && (!kind || !kind->takesPin))
        return {.status = 1,
                .complaint = "widget " + std::to_string(widget.number) + " shows no pin"};
    if (command.family) {
        if (!kind) return {.status = 1, .complaint = "there is no widget '" + widget.kind + "'"};
        const auto family = familyNamed(*kind, *command.family);
        if (!family) return unknown("--family", *command.family, knownFamilies(*kind));
        widget.family = *family;
    }
    if (command.pin) widget.pin = command.pin;
    if (command.place) move(widget, *command.place);
    return {};
}

}  // namespace

foundation::Result<Command> parseCall(const std::vector<std::string>& call,
                                      const std::string& folder) {
    return system::parse(program, call).andThen([&](const Words& words) {
        Reader read{words};
        const Command command = understand(read, folder);
        return read.whole(command);
    });
}

std::string helpText() { return system::help(program, program.self); }

bool needsKinds(const Command& command) {
    return command.action == Action::add || command.action == Action::openEditor ||
           (command.action == Action::edit && (command.pin || command.family));
}

Outcome carryOut(const Command& command, std::vector<PlacedWidget>& widgets,
                 const std::vector<Monitor>& monitors, const Kinds& kinds) {
    if (command.action == Action::list)
        return {.output = command.json ? encodeWidgets(widgets) : listed(widgets, kinds)};
    if (command.action == Action::add) return add(command, widgets, monitors, kinds);
    const auto it = std::ranges::find(widgets, command.number, &PlacedWidget::number);
    if (it == widgets.end())
        return {.status = 1, .complaint = "there is no widget " + std::to_string(command.number)};
    if (command.action == Action::remove) {
        widgets.erase(it);
        return {};
    }
    return edit(command, *it, kindNamed(kinds, it->kind));
}

}  // namespace tessary::desktop
