#include "desktop/messages.h"

#include "desktop/json_values.h"

namespace tessary::desktop {

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
    if (!entries || !after) return std::nullopt;
    Timeline timeline{.after = *after};
    Pictures pictures;
    for (unsigned i = 0; i < json_array_get_length(entries); ++i) {
        auto entry = decodeEntry(objectAt(entries, i), pictures);
        if (!entry) return std::nullopt;
        timeline.entries.push_back(std::move(*entry));
    }
    return timeline;
}

std::optional<std::vector<WidgetKind>> decodeKinds(JsonArray* list) {
    std::vector<WidgetKind> kinds;
    for (unsigned i = 0; i < json_array_get_length(list); ++i) {
        const auto from = objectAt(list, i);
        const auto kind = text(from, "kind"), name = text(from, "displayName");
        if (!kind || !name) return std::nullopt;
        kinds.push_back({*kind, *name});
    }
    return kinds;
}

void addTimelineMembers(JsonBuilder* json, const Request& request) {
    const auto named = [json](const char* name) { json_builder_set_member_name(json, name); };
    named("widget"), json_builder_add_string_value(json, request.widget.c_str());
    if (request.pin) named("pin"), json_builder_add_string_value(json, request.pin->c_str());
    named("family"), json_builder_add_string_value(json, request.family.c_str());
    named("scale"), json_builder_add_int_value(json, request.scale);
    named("redacted"), json_builder_add_boolean_value(json, request.redacted);
}

}  // namespace

std::string encode(const Request& request, std::int64_t id) {
    const Object<JsonBuilder> json{json_builder_new()};
    json_builder_begin_object(json.get());
    json_builder_set_member_name(json.get(), "id");
    json_builder_add_int_value(json.get(), id);
    json_builder_set_member_name(json.get(), "request");
    json_builder_add_string_value(json.get(), request.request.c_str());
    if (!request.widget.empty()) addTimelineMembers(json.get(), request);
    json_builder_end_object(json.get());
    return built(json.get(), false) + "\n";
}

std::optional<Reply> decodeReply(std::string_view line) {
    const JsonText json{line};
    const auto id = integer(json.object(), "id");
    if (!id) return std::nullopt;
    if (const auto error = text(json.object(), "error")) return Reply{.id = *id, .error = *error};
    if (const auto list = array(json.object(), "widgets")) {
        auto kinds = decodeKinds(list);
        if (!kinds) return std::nullopt;
        return Reply{.id = *id, .kinds = std::move(*kinds)};
    }
    auto timeline = decodeTimeline(json.object());
    if (!timeline) return std::nullopt;
    return Reply{.id = *id, .timeline = std::move(timeline)};
}

}  // namespace tessary::desktop
