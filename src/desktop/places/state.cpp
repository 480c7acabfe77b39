#include "desktop/places/state.h"

#include <algorithm>
#include <cerrno>
#include <glib/gstdio.h>
#include <stdexcept>

#include "desktop/glib/json_values.h"
#include "desktop/glib/note.h"

namespace tessary::places {

using namespace glib;

namespace {

std::optional<int> within(std::optional<std::int64_t> value, std::int64_t least,
                          std::int64_t most) {
    if (!value || *value < least || *value > most) return std::nullopt;
    return static_cast<int>(*value);
}

std::optional<Offset> decodeOffset(JsonObject* from, std::string_view start, std::string_view end) {
    const auto edge = text(from, "from");
    const auto points = within(integer(from, "points"), 0, farthest);
    if (!points || (edge != start && edge != end)) return std::nullopt;
    return Offset{edge == end ? From::end : From::start, *points};
}

std::optional<MonitorName> decodeMonitor(JsonObject* from) {
    const auto maker = text(from, "maker"), model = text(from, "model");
    const auto connector = text(from, "connector");
    if (!maker || !model || !connector) return std::nullopt;
    return MonitorName{*maker, *model, *connector};
}

std::optional<Place> decodePlace(JsonObject* from) {
    const auto monitor = decodeMonitor(object(from, "monitor"));
    const auto x = decodeOffset(object(from, "x"), "left", "right");
    const auto y = decodeOffset(object(from, "y"), "top", "bottom");
    if (!x || !y || (!monitor && !isNull(from, "monitor"))) return std::nullopt;
    return Place{monitor, *x, *y};
}

std::optional<PlacedWidget> decodeWidget(JsonObject* from) {
    const auto place = decodePlace(object(from, "place"));
    const auto number = within(integer(from, "number"), 1, G_MAXINT);
    const auto kind = text(from, "widget");
    const auto family = familyNamed(text(from, "family").value_or(""));
    const auto pin = text(from, "pin");
    if (!number || !kind || !family || !place) return std::nullopt;
    if (!pin && !isNull(from, "pin")) return std::nullopt;
    return PlacedWidget{*number, *kind, *family, pin, *place};
}

/// Members of an object under way.
class Members {
public:
    explicit Members(JsonBuilder* json) : json_{json} {}

    void add(const char* name, const std::optional<std::string>& value) {
        json_builder_set_member_name(json_, name);
        json_builder_add_string_value(json_, value ? value->c_str() : nullptr);
    }
    void add(const char* name, int value) {
        json_builder_set_member_name(json_, name);
        json_builder_add_int_value(json_, value);
    }
    template <class Add>
    void addObject(const char* name, Add addMembers) {
        json_builder_set_member_name(json_, name);
        json_builder_begin_object(json_);
        addMembers();
        json_builder_end_object(json_);
    }
    void add(const char* name, Offset offset, const char* start, const char* end) {
        addObject(name, [&] {
            add("from", offset.from == From::end ? end : start);
            add("points", offset.points);
        });
    }
    void add(const char* name, const std::optional<MonitorName>& monitor) {
        if (!monitor) return add(name, std::optional<std::string>{});
        addObject(name, [&] {
            add("maker", monitor->maker);
            add("model", monitor->model);
            add("connector", monitor->connector);
        });
    }

private:
    JsonBuilder* json_;
};

void encodeWidget(JsonBuilder* json, const PlacedWidget& widget) {
    Members members{json};
    json_builder_begin_object(json);
    members.add("number", widget.number);
    members.add("widget", widget.kind);
    members.add("family", nameOf(widget.family));
    members.add("pin", widget.pin);
    members.addObject("place", [&] {
        members.add("monitor", widget.place.monitor);
        members.add("x", widget.place.x, "left", "right");
        members.add("y", widget.place.y, "top", "bottom");
    });
    json_builder_end_object(json);
}

/// Moves a file out of the way, never onto another.
void setAside(const std::string& file) {
    for (int n = 1;; ++n) {
        const auto aside = file + ".unreadable-" + std::to_string(n);
        if (g_file_test(aside.c_str(), G_FILE_TEST_EXISTS)) continue;
        if (g_rename(file.c_str(), aside.c_str()) != 0)
            throw std::runtime_error{
                file + " is unreadable and cannot be set aside: " + g_strerror(errno)};
        return note(std::string{file}.append(" is unreadable and was set aside as ").append(aside));
    }
}

}  // namespace

std::string stateFile() {
    return Text{
        g_build_filename(g_get_user_config_dir(), "tessary-widgets", "desktop.json", nullptr)}
        .get();
}

std::string encodeWidgets(const std::vector<PlacedWidget>& widgets) {
    const Object<JsonBuilder> json{json_builder_new()};
    json_builder_begin_object(json.get());
    json_builder_set_member_name(json.get(), "widgets");
    json_builder_begin_array(json.get());
    for (const auto& widget : widgets) encodeWidget(json.get(), widget);
    json_builder_end_array(json.get());
    json_builder_end_object(json.get());
    return built(json.get(), true) + "\n";
}

std::optional<std::vector<PlacedWidget>> decodeWidgets(std::string_view text) {
    const JsonText json{text};
    const auto list = array(json.object(), "widgets");
    if (!list) return std::nullopt;
    std::vector<PlacedWidget> widgets;
    for (unsigned i = 0; i < json_array_get_length(list); ++i) {
        const auto widget = decodeWidget(objectAt(list, i));
        const auto same = [&](const auto& other) { return other.number == widget->number; };
        if (!widget || std::ranges::any_of(widgets, same)) return std::nullopt;
        widgets.push_back(*widget);
    }
    return widgets;
}

std::vector<PlacedWidget> loadWidgets(const std::string& file) {
    char* bytes{};
    gsize size{};
    Fault fault;
    const bool read = g_file_get_contents(file.c_str(), &bytes, &size, fault.out());
    const Text owner{bytes};
    if (!read && fault.is(G_FILE_ERROR, G_FILE_ERROR_NOENT)) return {};
    auto widgets = read ? decodeWidgets({bytes, size}) : std::nullopt;
    if (!widgets) setAside(file);
    return widgets.value_or(std::vector<PlacedWidget>{});
}

void saveWidgets(const std::string& file, const std::vector<PlacedWidget>& widgets) {
    const Text folder{g_path_get_dirname(file.c_str())};
    if (g_mkdir_with_parents(folder.get(), 0700) != 0)
        throw std::runtime_error{std::string{folder.get()} + ": " + g_strerror(errno)};
    const auto bytes = encodeWidgets(widgets);
    Fault fault;
    const auto size = static_cast<gssize>(bytes.size());
    if (!g_file_set_contents(file.c_str(), bytes.c_str(), size, fault.out()))
        throw std::runtime_error{fault.message()};
}

}  // namespace tessary::places
