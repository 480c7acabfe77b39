#include "extension/requests.h"

#include <exception>
#include <optional>

#include "extension/descriptions.h"
#include "extension/widget_lookup.h"
#include "platform/drawing/text_painter.h"
#include "platform/foundation/json_writing.h"
#include "protocol/replies.h"
#include "protocol/request.h"

namespace tessary::extension {

using foundation::decodeJSON;
using foundation::Fault;
using foundation::name;
using foundation::Result;
using foundation::toJSON;
using locale::UserLocale;
using protocol::Identifier;
using protocol::Reply;
using widgets::WidgetConfiguration;
using widgets::WidgetEntry;

namespace {

Fault notKnown(const std::string& member, const std::string& word, const std::string& known) {
    return {member + ": '" + word + "' is not one of " + known};
}

template <class Case>
Result<Case> parsed(const std::string& member, const std::optional<std::string>& word,
                    Case otherwise) {
    if (!word) return otherwise;
    if (const auto value = foundation::parse<Case>(*word)) return *value;
    return notKnown(member, *word, foundation::knownNames<Case>());
}

/// A word as the option of the same name takes it.
template <class Parse>
Result<std::string> parsed(const std::string& member, const std::optional<std::string>& word,
                           std::string otherwise, Parse parse, const std::string& expected) {
    if (!word) return otherwise;
    if (auto value = parse(*word)) return *std::move(value);
    return Fault{member + ": '" + *word + "' is not " + expected};
}

Result<UserLocale> localeOf(const protocol::Request& request, const UserLocale& users) {
    auto identifier = parsed("locale", request.locale, users.identifier,
                             UserLocale::parseIdentifier, "a locale such as en_US or de_DE");
    if (!identifier) return identifier.fault();
    auto zone = parsed("timeZone", request.timeZone, users.timeZone, UserLocale::parseTimeZone,
                       "a time zone such as UTC or Europe/Berlin");
    if (!zone) return zone.fault();
    UserLocale locale = request.locale ? UserLocale{*std::move(identifier)} : users;
    locale.timeZone = *std::move(zone);
    return locale;
}

Result<PictureOptions> pictureOptions(const protocol::Request& request, UserLocale locale) {
    PictureOptions options{.locale = std::move(locale)};
    const auto family = parsed("family", request.family, options.family);
    if (!family) return family.fault();
    const auto format = parsed("format", request.format, options.format);
    if (!format) return format.fault();
    options.family = *family;
    options.format = *format;
    options.redacted = request.redacted.value_or(false);
    options.scale = request.scale.value_or(options.scale);
    if (options.scale < 1 || options.scale > 4)
        return Fault{"scale: expected a number of pixels per point from 1 to 4"};
    return options;
}

/// What requests are answered from.
struct Ground {
    const snapshot::Source& source;
    const UserLocale& locale;
    Renderer& renderer;
    const foundation::JSONWriter::Sink& send;
};

Result<WidgetConfiguration> widgetOf(const protocol::Request& request, const Ground& ground) {
    if (!request.widget)
        return Fault{"widget: expected alarms, alarm, metric, or a kind identifier"};
    if (auto widget = findWidget(*request.widget, ground.source)) return *std::move(widget);
    return notKnown("widget", *request.widget, "alarms, alarm, metric or a kind identifier");
}

Result<PinChoice> pinChoice(const protocol::Request& request, const WidgetConfiguration& widget) {
    const bool isNone = request.noPin.value_or(false);
    if (request.pin && isNone) return Fault{"pin and noPin: only one of them can hold"};
    if (!request.pin && !isNone) return PinChoice{};
    if (!widget.intent) return Fault{"pin: '" + widget.kind + "' has none to be configured with"};
    if (isNone) return PinChoice{PinChoice::Kind::none, {}};
    return PinChoice{PinChoice::Kind::identifier, *request.pin};
}

/// Draws entries one after the other. Most minutes look like the one before; their picture is made
/// once.
class EntryArtist {
public:
    EntryArtist(Renderer& renderer, const std::string& kind, const PictureOptions& options,
                bool isDisplayed)
        : renderer_(renderer), kind_(kind), options_(options), isDisplayed_(isDisplayed) {}

    protocol::Entry drawn(const WidgetEntry& entry) {
        views::DisplayList list = renderer_.layOut(entry, options_);
        if (bearsDate(options_.format) || list != list_) {
            list_ = std::move(list);
            picture_ = renderer_.paint(list_, kind_, entry.date, options_);
        }
        return {
            .date = entry.date.seconds,
            .display = {isDisplayed_ ? entry.describe : nullptr},
            .url = list_.url,
            .text = drawing::paintText(list_),
            .picture = {picture_},
        };
    }

private:
    Renderer& renderer_;
    const std::string& kind_;
    const PictureOptions& options_;
    bool isDisplayed_;
    views::DisplayList list_{};
    std::string picture_{};
};

Result<protocol::Timeline> timeline(const protocol::Request& request, widgets::Request which,
                                    const Ground& ground) {
    const auto widget = widgetOf(request, ground);
    if (!widget) return widget.fault();
    const auto options = localeOf(request, ground.locale).andThen([&](UserLocale locale) {
        return pictureOptions(request, std::move(locale));
    });
    if (!options) return options.fault();
    const auto choice = pinChoice(request, *widget);
    if (!choice) return choice.fault();
    const auto answer = widget->answer(which, {options->family, request.preview.value_or(false),
                                               configured(*widget, which, *choice)});
    protocol::Timeline result{
        .kind = widget->kind,
        .request = std::string{name(which)},
        .family = std::string{name(options->family)},
        .scale = options->scale,
        .redacted = options->redacted,
        .format = std::string{name(options->format)},
        .policy = policyOf(answer),
    };
    EntryArtist artist{ground.renderer, widget->kind, *options, request.display.value_or(true)};
    for (const WidgetEntry& entry : answer.entries) result.entries.push_back(artist.drawn(entry));
    return result;
}

std::string refusal(const Identifier& id, const std::string& error) {
    return toJSON(Reply<protocol::Failure>{{error}, id});
}

template <class Content>
std::string reply(const Identifier& id, Result<Content> content, const Ground& ground) {
    if (!content) return refusal(id, content.fault().message());
    constexpr auto oneLine = foundation::JSONWriter::Style::compact;
    return toJSON(Reply<Content>{*std::move(content), id}, oneLine, ground.send);
}

std::string pinsReply(const Identifier& id, const protocol::Request& request,
                      const Ground& ground) {
    const auto widget = widgetOf(request, ground);
    if (!widget) return refusal(id, widget.fault().message());
    if (!widget->intent)
        return refusal(id, notKnown("widget", *request.widget, "alarm, metric").message());
    if (request.ids) return reply(id, Result{entities(*widget->intent, *request.ids)}, ground);
    return reply(id, Result{suggestions(*widget->intent)}, ground);
}

std::string answerTo(const Identifier& id, std::string_view line, const Ground& ground) {
    const auto request = decodeJSON<protocol::Request>(line);
    if (!request) return refusal(id, request.fault().message());
    if (request->request == "list") return reply(id, Result{bundleList()}, ground);
    if (request->request == "pins") return pinsReply(id, *request, ground);
    if (const auto which = foundation::parse<widgets::Request>(request->request))
        return reply(id, timeline(*request, *which, ground), ground);
    const auto known = "list, pins, " + foundation::knownNames<widgets::Request>();
    return refusal(id, notKnown("request", request->request, known).message());
}

}  // namespace

std::string refusal(const std::string& error) { return refusal(Identifier{}, error); }

std::string Extension::answer(std::string_view line, const Send& send) {
    protocol::Address address;
    if (const auto fault = foundation::fillFromJSON(address, line))
        return refusal(address.id, fault->message());
    bool hasBegun = false;
    const Send begin = [&](std::string part) {
        hasBegun = true;
        send(std::move(part));
    };
    try {
        return answerTo(address.id, line, {source_, locale_, renderer_, begin});
    } catch (const std::exception& error) {  // of a library that draws
        if (hasBegun) throw;
        return refusal(address.id, error.what());
    }
}

}  // namespace tessary::extension
