#include "desktop/client/messages.h"

#include "desktop/glib/json_values.h"

namespace tessary::client {

using namespace glib;
using namespace places;

namespace {

constexpr std::string_view pngSignature = "\x89PNG";

Picture decodePicture(const std::string& base64) {
    gsize size{};
    const std::unique_ptr<guchar, Free> bytes{g_base64_decode(base64.c_str(), &size)};
    auto picture = std::make_shared<const std::string>(bytes.get(), bytes.get() + size);
    return picture->starts_with(pngSignature) ? picture : nullptr;
}

/// The entries' pictures, of which neighbours that are the same are decoded once.
class Pictures {
public:
    Picture decoded(const std::string& base64) {
        if (!last_ || base64 != base64_) last_ = decodePicture(base64);
        base64_ = base64;
        return last_;
    }

private:
    std::string base64_{};
    Picture last_{};
};

std::optional<Entry> decodeEntry(JsonObject* from, Pictures& pictures) {
    const auto date = number(from, "date");
    const auto words = text(from, "text");
    const auto url = text(from, "url");
    const auto base64 = text(from, "picture");
    if (!date || !words || !base64 || (!url && !isNull(from, "url"))) return std::nullopt;
    const auto picture = pictures.decoded(*base64);
    if (!picture) return std::nullopt;
    return Entry{*date, url, *words, picture};
}

std::optional<Timeline> decodeTimeline(JsonObject* from) {
    const auto entries = array(from, "entries");
    const auto after = number(object(from, "policy"), "after");
    const bool isSnapshot = isNull(from, "policy") && text(from, "request") == "snapshot";
    if (!entries || (!after && !isSnapshot)) return std::nullopt;
    Timeline timeline;
    if (after) timeline.after = *after;
    Pictures pictures;
    for (unsigned i = 0; i < json_array_get_length(entries); ++i) {
        auto entry = decodeEntry(objectAt(entries, i), pictures);
        if (!entry) return std::nullopt;
        timeline.entries.push_back(std::move(*entry));
    }
    return timeline;
}

/// What `decode` makes of each of a list's elements, an object or null; nothing where it makes
/// nothing of one, or where there is no list.
template <class Value>
std::optional<std::vector<Value>> decodeAll(JsonArray* list,
                                            std::optional<Value> (*decode)(JsonObject*)) {
    if (!list) return std::nullopt;
    std::vector<Value> values;
    for (unsigned i = 0; i < json_array_get_length(list); ++i) {
        auto value = decode(objectAt(list, i));
        if (!value) return std::nullopt;
        values.push_back(std::move(*value));
    }
    return values;
}

/// Families that no desktop has are passed over.
std::optional<std::vector<Family>> decodeFamilies(JsonArray* list) {
    if (!list) return std::nullopt;
    std::vector<Family> families;
    for (unsigned i = 0; i < json_array_get_length(list); ++i) {
        const auto name = textAt(list, i);
        if (!name) return std::nullopt;
        if (name == "systemSmall") families.push_back(Family::small);
        if (name == "systemMedium") families.push_back(Family::medium);
    }
    return families;
}

std::optional<WidgetKind> decodeKind(JsonObject* from) {
    const auto kind = text(from, "kind"), name = text(from, "displayName");
    const auto description = text(from, "description"), configuration = text(from, "configuration");
    auto families = decodeFamilies(array(from, "families"));
    if (!kind || !name || !description || !families) return std::nullopt;
    if (configuration != "static" && configuration != "intent") return std::nullopt;
    return WidgetKind{*kind, *name, *description, std::move(*families), configuration == "intent"};
}

std::optional<Pin> decodePin(JsonObject* from) {
    const auto id = text(from, "id"), name = text(from, "name"), detail = text(from, "detail");
    if (!id || !name || (!detail && !isNull(from, "detail"))) return std::nullopt;
    return Pin{*id, *name, detail.value_or("")};
}

std::optional<Pins> decodePins(JsonObject* from, const std::string& type) {
    if (auto asked = decodeAll(array(from, "entities"), decodePin))
        return Pins{.type = type, .pins = std::move(*asked)};
    auto initial = decodePin(object(from, "default"));
    auto suggested = decodeAll(array(from, "suggested"), decodePin);
    if (!suggested || (!initial && !isNull(from, "default"))) return std::nullopt;
    return Pins{type, std::move(initial), std::move(*suggested)};
}

/// The members after the widget, of a snapshot or a timeline.
void addPictureMembers(JsonBuilder* json, const Request& request) {
    const auto named = [json](const char* name) { json_builder_set_member_name(json, name); };
    if (request.pin) named("pin"), json_builder_add_string_value(json, request.pin->c_str());
    named("family"), json_builder_add_string_value(json, request.family.c_str());
    named("scale"), json_builder_add_int_value(json, request.scale);
    named("redacted"), json_builder_add_boolean_value(json, request.redacted);
    if (request.preview) named("preview"), json_builder_add_boolean_value(json, TRUE);
}

void addIds(JsonBuilder* json, const std::vector<std::string>& ids) {
    json_builder_set_member_name(json, "ids");
    json_builder_begin_array(json);
    for (const auto& id : ids) json_builder_add_string_value(json, id.c_str());
    json_builder_end_array(json);
}

}  // namespace

std::string encode(const Request& request, std::int64_t id) {
    const Object<JsonBuilder> json{json_builder_new()};
    json_builder_begin_object(json.get());
    json_builder_set_member_name(json.get(), "id");
    json_builder_add_int_value(json.get(), id);
    json_builder_set_member_name(json.get(), "request");
    json_builder_add_string_value(json.get(), request.request.c_str());
    if (!request.widget.empty()) {
        json_builder_set_member_name(json.get(), "widget");
        json_builder_add_string_value(json.get(), request.widget.c_str());
    }
    if (!request.family.empty()) addPictureMembers(json.get(), request);
    if (!request.ids.empty()) addIds(json.get(), request.ids);
    json_builder_end_object(json.get());
    return built(json.get(), false) + "\n";
}

std::optional<Reply> decodeReply(std::string_view line) {
    const JsonText json{line};
    const auto id = integer(json.object(), "id");
    if (!id) return std::nullopt;
    if (const auto error = text(json.object(), "error")) return Reply{.id = *id, .error = *error};
    if (const auto list = array(json.object(), "widgets")) {
        auto kinds = decodeAll(list, decodeKind);
        if (!kinds) return std::nullopt;
        return Reply{.id = *id, .kinds = std::move(*kinds)};
    }
    if (const auto type = text(json.object(), "type")) {
        auto pins = decodePins(json.object(), *type);
        if (!pins) return std::nullopt;
        return Reply{.id = *id, .pins = std::move(pins)};
    }
    auto timeline = decodeTimeline(json.object());
    if (!timeline) return std::nullopt;
    return Reply{.id = *id, .timeline = std::move(timeline)};
}

}  // namespace tessary::client
