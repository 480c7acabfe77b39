#include "desktop/command.h"

#include <algorithm>
#include <charconv>
#include <gio/gio.h>
#include <string_view>

#include "desktop/glib/handles.h"
#include "desktop/places/state.h"

namespace tessary::desktop {

using namespace glib;
using namespace places;

namespace {

/// The words as GLib's parser leaves them.
struct Words {
    gboolean list{}, json{}, gallery{}, reload{}, quit{}, help{}, version{};
    char *add{}, *remove{}, *edit{}, *open{}, *family{}, *pin{}, *position{}, *container{}, *info{};

    Words() = default;
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;
    ~Words() {
        for (char* word : {add, remove, edit, open, family, pin, position, container, info})
            g_free(word);
    }
};

struct FreeContext {
    void operator()(GOptionContext* context) const { g_option_context_free(context); }
};
using Context = std::unique_ptr<GOptionContext, FreeContext>;

Context optionContext(Words& words) {
    const auto flag = [](const char* name, gboolean& to, const char* what) {
        return GOptionEntry{name, 0, 0, G_OPTION_ARG_NONE, &to, what, nullptr};
    };
    const auto word = [](const char* name, char*& to, const char* what, const char* value) {
        // Words are taken as bytes, whatever the locale makes of them.
        return GOptionEntry{name, 0, 0, G_OPTION_ARG_FILENAME, &to, what, value};
    };
    const GOptionEntry entries[] = {
        flag("list", words.list, "Print the widgets on the desktop"),
        flag("json", words.json, "With --list: print them as JSON"),
        word("add", words.add, "Add a widget: alarms, alarm or metric", "WIDGET"),
        word("edit", words.edit,
             "Change widget N: its --pin, --family or --position; without, choose a pin", "N"),
        word("open", words.open, "Open the link of widget N, as a click does", "N"),
        word("remove", words.remove, "Remove widget N", "N"),
        word("family", words.family, "The size: small or medium", "FAMILY"),
        word("pin", words.pin, "The alarm or metric to show", "ID"),
        word("position", words.position,
             "Points from the left and the top, -X,-Y from the right and below", "X,Y"),
        flag("gallery", words.gallery, "Choose widgets to add in a window"),
        flag("reload", words.reload, "Ask for all widgets anew"),
        flag("quit", words.quit, "End the desktop that runs"),
        word("container", words.container, "The folder that holds widgets/", "DIR"),
        word("info", words.info, "The extension's information dictionary", "FILE"),
        flag("help", words.help, "Print this"),
        flag("version", words.version, "Print the version"),
        GOptionEntry{},
    };
    Context context{g_option_context_new(nullptr)};
    g_option_context_set_summary(context.get(), "Shows the widgets on the desktop.");
    g_option_context_add_main_entries(context.get(), entries, nullptr);
    g_option_context_set_help_enabled(context.get(), FALSE);
    return context;
}

/// Thrown inside this file for a word at fault; leaves it in a Call.
struct BadCall {
    std::string fault{};
};

BadCall badWord(const char* option, std::string_view word, const char* expected) {
    return {std::string{option} + ": '" + std::string{word} + "' is not " + expected};
}

std::optional<int> wholeNumber(std::string_view word, int least) {
    int value{};
    const auto end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc{} || stop != end || value < least || value > 100'000) return {};
    return value;
}

int parseNumber(const char* option, const char* word) {
    if (const auto value = wholeNumber(word, 1)) return *value;
    throw badWord(option, word, "a widget's number");
}

Place parsePosition(const char* word) {
    if (const auto place = parsePlace(word)) return *place;
    throw badWord("--position", word, "X,Y in points from the edges");
}

Action parseAction(const Words& words) {
    const bool changes = words.pin || words.family || words.position;
    const auto editing = changes ? Action::edit : Action::openEditor;
    const std::pair<bool, Action> given[] = {
        {words.help, Action::help},     {words.version, Action::version},
        {words.list, Action::list},     {words.add, Action::add},
        {words.remove, Action::remove}, {words.edit, editing},
        {words.open, Action::openLink}, {words.gallery, Action::gallery},
        {words.reload, Action::reload}, {words.quit, Action::quit},
    };
    const auto count = std::ranges::count(given, true, &std::pair<bool, Action>::first);
    if (count > 1)
        throw BadCall{
            "expected one of --list, --add, --remove, --edit, --open, --gallery, "
            "--reload and --quit, not " +
            std::to_string(count)};
    const auto first = std::ranges::find(given, true, &std::pair<bool, Action>::first);
    return first == std::end(given) ? Action::start : first->second;
}

void refuseStrayOptions(const Words& words, Action action) {
    const bool edits = action == Action::add || action == Action::edit;
    const auto refuse = [](bool given, bool fits, const char* option, const char* expected) {
        if (given && !fits)
            throw BadCall{std::string{option} + ": expected " + expected + " with it"};
    };
    refuse(words.json, action == Action::list, "--json", "--list");
    refuse(words.position, edits, "--position", "--add or --edit");
    refuse(words.family, edits, "--family", "--add or --edit");
    refuse(words.pin, edits, "--pin", "--add or --edit");
}

void understandWidget(const Words& words, Command& command) {
    if (words.add) {
        const auto kind = kindNamed(words.add);
        if (!kind) throw badWord("--add", words.add, "one of alarms, alarm, metric");
        if (words.pin && !takesPin(*kind))
            throw BadCall{"--pin: expected a widget that shows a pin, alarm or metric"};
        command.kind = *kind;
    }
    if (words.family && !(command.family = familyNamed(words.family)))
        throw badWord("--family", words.family, "one of small, medium");
    if (words.pin) {
        if (!g_utf8_validate(words.pin, -1, nullptr))
            throw badWord("--pin", Text{g_utf8_make_valid(words.pin, -1)}.get(), "UTF-8");
        command.pin = words.pin;
    }
    if (words.position) command.place = parsePosition(words.position);
    if (words.remove) command.number = parseNumber("--remove", words.remove);
    if (words.open) command.number = parseNumber("--open", words.open);
    if (words.edit) command.number = parseNumber("--edit", words.edit);
}

Command understand(const Words& words, const std::string& folder) {
    Command command{.action = parseAction(words), .json = words.json != FALSE};
    refuseStrayOptions(words, command.action);
    understandWidget(words, command);
    const auto path = [&](const char* word) {
        return word ? std::string{Text{g_canonicalize_filename(word, folder.c_str())}.get()} : "";
    };
    command.container = path(words.container);
    command.info = path(words.info);
    return command;
}

std::string listed(const std::vector<PlacedWidget>& widgets) {
    std::string lines;
    for (const auto& [number, kind, family, pin, place] : widgets)
        lines += std::to_string(number) + "  " + shortName(kind) + "  " + nameOf(family) + "  " +
                 describe(place) + (pin ? "  " + *pin : "") + "\n";
    return lines;
}

Outcome add(const Command& command, std::vector<PlacedWidget>& widgets,
            const std::vector<Monitor>& monitors) {
    int number = 1;
    for (const auto& widget : widgets) number = std::max(number, widget.number + 1);
    const auto family = command.family.value_or(Family::small);
    auto place = command.place ? *command.place : freePlace(widgets, family, monitors);
    if (!place.monitor) place.monitor = monitors.front().name;
    widgets.push_back({number, command.kind, family, command.pin, place});
    return {.output = std::to_string(number) + "\n"};
}

/// Moves a widget; on its monitor, where the new place names none.
void move(PlacedWidget& widget, Place place) {
    if (!place.monitor) place.monitor = widget.place.monitor;
    widget.place = place;
}

}  // namespace

Call parseCall(const std::vector<std::string>& words, const std::string& folder) try {
    std::vector<const char*> all{"tessary-widgets-desktop"};
    for (const auto& word : words) all.push_back(word.c_str());
    all.push_back(nullptr);
    Words found;
    const auto context = optionContext(found);
    std::unique_ptr<char*, decltype(&g_strfreev)> rest{g_strdupv(const_cast<char**>(all.data())),
                                                       g_strfreev};
    char** left = rest.release();
    Fault fault;
    const bool parsed = g_option_context_parse_strv(context.get(), &left, fault.out());
    rest.reset(left);
    if (!parsed) return {.fault = fault.message() + ", expected an option that --help names"};
    if (left[1]) throw badWord("call", left[1], "an option that --help names");
    return {.command = understand(found, folder)};
} catch (const BadCall& bad) {
    return {.fault = bad.fault};
}

std::string helpText() {
    Words words;
    g_set_prgname("tessary-widgets-desktop");
    return Text{g_option_context_get_help(optionContext(words).get(), TRUE, nullptr)}.get();
}

Outcome carryOut(const Command& command, std::vector<PlacedWidget>& widgets,
                 const std::vector<Monitor>& monitors) {
    if (command.action == Action::list)
        return {.output = command.json ? encodeWidgets(widgets) : listed(widgets)};
    if (command.action == Action::add) return add(command, widgets, monitors);
    const auto it = std::ranges::find(widgets, command.number, &PlacedWidget::number);
    if (it == widgets.end())
        return {.status = 1, .complaint = "there is no widget " + std::to_string(command.number)};
    if (command.action == Action::remove) {
        widgets.erase(it);
        return {};
    }
    const bool isOfPin = command.pin || command.action == Action::openEditor;
    if (isOfPin && !takesPin(it->kind))
        return {.status = 1,
                .complaint = "widget " + std::to_string(command.number) + " shows no pin"};
    if (command.pin) it->pin = command.pin;
    if (command.place) move(*it, *command.place);
    it->family = command.family.value_or(it->family);
    return {};
}

}  // namespace tessary::desktop
