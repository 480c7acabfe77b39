#include "extension/requests.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "extension/descriptions.h"
#include "extension/widget_lookup.h"
#include "platform/drawing/text_painter.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/json_decoding.h"
#include "platform/foundation/json_writing.h"

namespace tessary::extension {

/// A request's name for itself, which its reply repeats.
struct NumberedLine {
    std::optional<std::int64_t> id{};
};
struct NamedLine {
    std::optional<std::string> id{};
};

/// What a request may hold; which of it counts depends on `request`.
struct RequestLine {
    std::string request{};
    std::optional<std::string> widget{};
    std::optional<std::string> pin{};
    std::optional<bool> noPin{};
    std::optional<std::vector<std::string>> ids{};
    std::optional<std::string> family{};
    std::optional<double> scale{};
    std::optional<bool> preview{};
    std::optional<bool> redacted{};
    std::optional<std::string> format{};
    std::optional<std::string> locale{};
    std::optional<std::string> timeZone{};
};

}  // namespace tessary::extension

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<extension::NumberedLine> =
    std::tuple{Field{"id", &extension::NumberedLine::id}};
template <>
inline constexpr auto fieldsOf<extension::NamedLine> =
    std::tuple{Field{"id", &extension::NamedLine::id}};
template <>
inline constexpr auto fieldsOf<extension::RequestLine> = std::tuple{
    Field{"request", &extension::RequestLine::request},
    Field{"widget", &extension::RequestLine::widget},
    Field{"pin", &extension::RequestLine::pin},
    Field{"noPin", &extension::RequestLine::noPin},
    Field{"ids", &extension::RequestLine::ids},
    Field{"family", &extension::RequestLine::family},
    Field{"scale", &extension::RequestLine::scale},
    Field{"preview", &extension::RequestLine::preview},
    Field{"redacted", &extension::RequestLine::redacted},
    Field{"format", &extension::RequestLine::format},
    Field{"locale", &extension::RequestLine::locale},
    Field{"timeZone", &extension::RequestLine::timeZone},
};

}  // namespace tessary::foundation

namespace tessary::extension {

using foundation::decodeJSON;
using foundation::JSONWriter;
using locale::UserLocale;
using widgets::WidgetConfiguration;
using widgets::WidgetEntry;
using widgets::WidgetTimeline;

namespace {

using Identifier = std::variant<std::monostate, std::int64_t, std::string>;

/// Thrown inside this file for a request that cannot be answered; leaves it as an error.
struct BadRequest {
    std::string what{};
};

Identifier identifier(std::string_view line) {
    if (const auto numbered = decodeJSON<NumberedLine>(line)) {
        if (const auto id = numbered.value().id) return *id;
        return std::monostate{};
    }
    const auto named = decodeJSON<NamedLine>(line);
    if (named) return *named.value().id;
    const auto& fault = named.fault();
    throw BadRequest{fault.path == "/id"
                         ? "/id: expected a 64-bit integer or a text, found " + fault.found
                         : fault.message()};
}

RequestLine decoded(std::string_view line) {
    auto request = decodeJSON<RequestLine>(line);
    if (!request) throw BadRequest{request.fault().message()};
    return std::move(request).value();
}

std::string notKnown(const std::string& member, const std::string& word, const std::string& known) {
    return member + ": '" + word + "' is not one of " + known;
}

template <class Case>
Case parsed(const std::string& member, const std::optional<std::string>& word, Case otherwise) {
    if (!word) return otherwise;
    const auto value = foundation::parse<Case>(*word);
    if (!value) throw BadRequest{notKnown(member, *word, foundation::knownNames<Case>())};
    return *value;
}

/// A word as the option of the same name takes it.
template <class Parse>
void set(std::string& value, const std::string& member, const std::optional<std::string>& word,
         Parse parse, const std::string& expected) {
    if (!word) return;
    auto parsed = parse(*word);
    if (!parsed) throw BadRequest{member + ": '" + *word + "' is not " + expected};
    value = *std::move(parsed);
}

PictureOptions pictureOptions(const RequestLine& request, const UserLocale& locale) {
    PictureOptions options{.locale = locale};
    set(options.locale.identifier, "locale", request.locale, UserLocale::parseIdentifier,
        "a locale such as en_US or de_DE");
    set(options.locale.timeZone, "timeZone", request.timeZone, UserLocale::parseTimeZone,
        "a time zone such as UTC or Europe/Berlin");
    options.family = parsed("family", request.family, options.family);
    options.format = parsed("format", request.format, options.format);
    options.redacted = request.redacted.value_or(false);
    options.scale = request.scale.value_or(options.scale);
    if (options.scale < 1 || options.scale > 4)
        throw BadRequest{"scale: expected a number of pixels per point from 1 to 4"};
    return options;
}

WidgetConfiguration widgetOf(const RequestLine& request, const snapshot::Source& source) {
    if (!request.widget)
        throw BadRequest{"widget: expected alarms, alarm, metric, or a kind identifier"};
    auto widget = findWidget(*request.widget, source);
    if (!widget)
        throw BadRequest{notKnown("widget", *request.widget, "alarms, alarm, metric") +
                         " or a kind identifier"};
    return *std::move(widget);
}

PinChoice pinChoice(const RequestLine& request) {
    if (request.pin && request.noPin.value_or(false))
        throw BadRequest{"pin and noPin: only one of them can hold"};
    if (request.pin) return {PinChoice::Kind::identifier, *request.pin};
    return request.noPin.value_or(false) ? PinChoice{PinChoice::Kind::none, {}} : PinChoice{};
}

WidgetTimeline asked(const WidgetConfiguration& widget, widgets::Request which,
                     const RequestLine& request, const PictureOptions& options) {
    const PinChoice choice = pinChoice(request);
    if (!widget.intent && choice != PinChoice{})
        throw BadRequest{"pin: '" + widget.kind + "' has none to be configured with"};
    return widget.answer(
        which, {options.family, request.preview.value_or(false), configured(widget, choice)});
}

/// Writes entries one after the other. Most minutes look like the one before; their picture is made
/// once.
class EntryWriter {
public:
    EntryWriter(JSONWriter& json, Renderer& renderer, const std::string& kind,
                const PictureOptions& options)
        : json_(json), renderer_(renderer), kind_(kind), options_(options) {}

    void write(const WidgetEntry& entry) {
        views::DisplayList list = renderer_.layOut(entry, options_);
        if (bearsItsDate() || list != list_) {
            list_ = std::move(list);
            picture_ = foundation::base64(renderer_.paint(list_, kind_, entry.date, options_));
        }
        json_.object([&] {
            json_.member("date", entry.date).key("display");
            entry.describe(json_);
            json_.member("url", list_.url);
            json_.member("text", drawing::paintText(list_));
            json_.member("picture", picture_);
        });
    }

private:
    bool bearsItsDate() const {
        return options_.format == PictureFormat::pdf || options_.format == PictureFormat::json;
    }

    JSONWriter& json_;
    Renderer& renderer_;
    const std::string& kind_;
    const PictureOptions& options_;
    views::DisplayList list_{};
    std::string picture_{};
};

void describeChoices(JSONWriter& json, const RequestLine& request, const snapshot::Source& source) {
    const WidgetConfiguration widget = widgetOf(request, source);
    if (!widget.intent) throw BadRequest{notKnown("widget", *request.widget, "alarm, metric")};
    describePins(json, *widget.intent, request.ids.value_or(std::vector<std::string>{}));
}

std::string refusal(const Identifier& id, const std::string& error) {
    JSONWriter json;
    json.object([&] { json.member("id", id).member("error", error); });
    return std::move(json).text();
}

}  // namespace

std::string refusal(const std::string& error) { return refusal(Identifier{}, error); }

std::string Extension::answer(std::string_view line) {
    Identifier id;
    try {
        id = identifier(line);
        const RequestLine request = decoded(line);
        JSONWriter json;
        json.object([&] {
            json.member("id", id);
            describe(json, request);
        });
        return std::move(json).text();
    } catch (const BadRequest& bad) {
        return refusal(id, bad.what);
    } catch (const std::exception& error) {
        return refusal(id, error.what());
    }
}

void Extension::describeEntries(JSONWriter& json, widgets::Request which,
                                const RequestLine& request) {
    const WidgetConfiguration widget = widgetOf(request, source_);
    const PictureOptions options = pictureOptions(request, locale_);
    const WidgetTimeline timeline = asked(widget, which, request, options);
    json.member("kind", widget.kind).member("request", which);
    json.member("family", options.family).member("scale", options.scale);
    json.member("redacted", options.redacted).member("format", options.format);
    json.key("entries").array([&] {
        EntryWriter entries{json, renderer_, widget.kind, options};
        for (const WidgetEntry& entry : timeline.entries) entries.write(entry);
    });
    describePolicy(json, timeline);
}

void Extension::describe(JSONWriter& json, const RequestLine& request) {
    if (request.request == "list") return describeBundle(json);
    if (request.request == "pins") return describeChoices(json, request, source_);
    const auto which = foundation::parse<widgets::Request>(request.request);
    if (!which)
        throw BadRequest{notKnown("request", request.request,
                                  "list, pins, " + foundation::knownNames<widgets::Request>())};
    describeEntries(json, *which, request);
}

}  // namespace tessary::extension
