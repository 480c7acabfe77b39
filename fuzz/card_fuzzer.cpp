// The whole way: any bytes as a widget's file, through the bundle's own provider and views to the
// display lists of both sizes, and from some of these on to pictures.
//
// The first six bytes choose widget, request, pin, clock, locale, and entry and scale; the file's
// bytes follow.
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "display_list_rules.h"
#include "fuzzer.h"
#include "percent_decoding.h"
#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/json_painter.h"
#include "platform/drawing/pango_typesetter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/drawing/text_painter.h"
#include "platform/foundation/utf8.h"
#include "platform/locale/text_equality.h"
#include "platform/views/layout.h"
#include "shell/tessary_widgets.h"
#include "snapshot/alarms_snapshot.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::fuzz {
namespace {

using foundation::Date;
using views::DisplayList;
using views::WidgetFamily;
using widgets::Request;
using widgets::WidgetConfiguration;
using widgets::WidgetEntry;
using widgets::WidgetTimeline;

enum class Widget { alarms, metric, alarmPin };  ///< in the bundle's order
constexpr std::array fileNames{"alarms", "metrics", "alarm-pins"};

/// Around the samples' times, then where calendars and doubles end.
constexpr std::array clocks{1731772840.0, 1731772860.5, 1731772990.0, 1731773300.0, 1731780000.0,
                            1735732800.0, 0.0,          -1e9,         1e11,         -1e15,
                            1e17,         -1e300,       1e300};
constexpr std::array locales{
    std::pair{"en_US", "UTC"},          std::pair{"de_DE", "Europe/Berlin"},
    std::pair{"ar_EG", "Africa/Cairo"}, std::pair{"ja_JP", "Asia/Tokyo"},
    std::pair{"he_IL", "Asia/Kolkata"}, std::pair{"no_such", "nowhere"}};
constexpr std::array scales{1.0, 2.0, 3.0, 1.5};

/// What an entry's display state says of itself.
struct Shown {
    std::string state{};
    std::optional<bool> stale{};
    bool operator==(const Shown&) const = default;
};
/// As much of a card in JSON as tells that nothing was lost.
struct DrawnElement {
    std::string type{};
    bool accent{};
    bool operator==(const DrawnElement&) const = default;
};
struct DrawnCard {
    std::string kind{};
    double scale{};
    std::optional<std::string> url{};
    std::vector<DrawnElement> elements{};
    bool operator==(const DrawnCard&) const = default;
};

struct Case {
    Widget widget{};
    Request request{};
    bool isPreview{};
    std::optional<std::string> choice{};
    Date now{};
    locale::UserLocale locale{};
    std::string_view bytes{};
    std::uint8_t look{};  ///< chooses the entry and the scale
};

/// What a widget is to show, worked out from the file without the room that does it.
struct Expected {
    std::string state{};
    std::optional<std::string> link{};  ///< decoded: the link's names, a line each
};

/// A folder for the one file; goes when the process ends in order.
class Container {
public:
    Container() : root_(std::filesystem::temp_directory_path() / "tessary-fuzz-XXXXXX") {
        std::string name = root_.string();
        require(::mkdtemp(name.data()) != nullptr, "there is room for a folder", name);
        root_ = name;
        std::filesystem::create_directory(root_ / "widgets");
    }
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    ~Container() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    void put(Widget widget, std::string_view bytes) const {
        const std::string name = fileNames[static_cast<std::size_t>(widget)];
        std::ofstream{root_ / "widgets" / (name + ".json"), std::ios::binary} << bytes;
    }
    const std::filesystem::path& root() const { return root_; }

private:
    std::filesystem::path root_;
};

std::optional<drawing::PangoTypesetter>& sharedTypesetter() {
    static std::optional<drawing::PangoTypesetter> shared;
    return shared;
}
drawing::PangoTypesetter& typesetter() { return *sharedTypesetter(); }

/// To be called for each input: a new typesetter costs more than a card, but none forgets a text.
void renewTypesetterSometimes() {
    constexpr int inputs = 300;
    static int count = 0;
    if (count++ % inputs == 0) sharedTypesetter().emplace("ja_JP");
}

template <class Snapshot>
std::optional<Snapshot> decoded(std::string_view bytes) {
    auto result = foundation::decodeJSON<Snapshot>(bytes);
    if (!result || result.value().schemaVersion > 1) return std::nullopt;
    return std::move(result).value();
}

bool showsSample(const Case& asked, bool nothingThere) {
    return asked.request == Request::placeholder ||
           (asked.request == Request::snapshot && asked.isPreview && nothingThere);
}

Expected expectedAlarms(const Case& asked) {
    const auto file = decoded<snapshot::AlarmsSnapshot>(asked.bytes);
    if (showsSample(asked, !file)) return {"watching", {}};
    if (!file) return {"unavailable", {}};
    return {file->state == "watching" ? "watching" : "notWatching", {}};
}

std::string linked(const snapshot::AlarmPinsSnapshot::Pin& pin) {
    return pin.alarmName + "\n" + pin.profile + "\n" + pin.region;
}
std::string linked(const snapshot::MetricPinsSnapshot::Pin& pin) { return pin.id; }

template <class Snapshot>
Expected expectedPin(const Case& asked) {
    const auto file = decoded<Snapshot>(asked.bytes);
    const bool nothingThere = !file || file->pins.empty();
    if (showsSample(asked, nothingThere)) return {"pinned", {}};
    if (nothingThere) return {"notPinned", {}};
    if (!asked.choice) return {"choose", {}};
    for (const auto& pin : file->pins)
        if (locale::canonicallyEqual(pin.id, *asked.choice)) return {"pinned", linked(pin)};
    return {"removed", {}};
}

Expected expected(const Case& asked) {
    switch (asked.widget) {
        case Widget::alarms: return expectedAlarms(asked);
        case Widget::metric: return expectedPin<snapshot::MetricPinsSnapshot>(asked);
        case Widget::alarmPin: return expectedPin<snapshot::AlarmPinsSnapshot>(asked);
    }
    return {};
}

/// Takes `start` and then all up to `end` off the front of a link, and decodes that.
std::string takeName(std::string_view& link, std::string_view start, std::string_view end) {
    require(link.starts_with(start), "a link names its pin", link);
    link.remove_prefix(start.size());
    const std::size_t length = end.empty() ? link.size() : link.find(end);
    require(length != link.npos, "a link names its pin", link);
    const auto name = percentDecoded(link.substr(0, length));
    require(name.has_value(), "a link's names are encoded", link);
    link.remove_prefix(length);
    return *name;
}

std::string namesIn(std::string_view link, Widget widget) {
    if (widget == Widget::metric) return takeName(link, "tessary://cloudwatch/metric?pin=", "");
    std::string names = takeName(link, "tessary://alarms/", "?") + "\n";
    names += takeName(link, "?profile=", "&") + "\n";
    return names + takeName(link, "&region=", "");
}

void checkLink(const std::optional<std::string>& link, const Case& asked, const Expected& wanted) {
    const bool isPinned = wanted.state == "pinned";
    require(link.has_value() == (asked.widget != Widget::metric || isPinned),
            "a card has its link");
    if (link && !isPinned) require(*link == "tessary://alarms", "else it leads to the list", *link);
    if (wanted.link)
        require(namesIn(*link, asked.widget) == *wanted.link, "a link is exact", *link);
}

}  // namespace
}  // namespace tessary::fuzz

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::fuzz::Shown> = std::tuple{
    Field{"case", &tessary::fuzz::Shown::state}, Field{"stale", &tessary::fuzz::Shown::stale}};
template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::fuzz::DrawnElement> =
    std::tuple{Field{"type", &tessary::fuzz::DrawnElement::type},
               Field{"accent", &tessary::fuzz::DrawnElement::accent}};
template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::fuzz::DrawnCard> = std::tuple{
    Field{"kind", &tessary::fuzz::DrawnCard::kind},
    Field{"scale", &tessary::fuzz::DrawnCard::scale}, Field{"url", &tessary::fuzz::DrawnCard::url},
    Field{"elements", &tessary::fuzz::DrawnCard::elements}};

namespace tessary::fuzz {
namespace {

/// Each entry shows what it should; what has become stale stays so.
void checkStates(const WidgetTimeline& timeline, const Expected& wanted) {
    bool wasStale = false;
    for (const WidgetEntry& entry : timeline.entries) {
        foundation::JSONWriter json;
        entry.describe(json);
        const auto shown = foundation::decodeJSON<Shown>(json.text());
        require(bool{shown}, "a display state is JSON", json.text());
        require(shown.value().state == wanted.state, "a display state is the right one",
                json.text() + " instead of " + wanted.state);
        const bool isStale = shown.value().stale.value_or(false);
        require(isStale || !wasStale, "stale data does not become fresh", json.text());
        wasStale = isStale;
    }
}

void checkDates(const WidgetTimeline& timeline, const Case& asked) {
    const bool isTimeline = asked.request == Request::timeline;
    require(timeline.entries.size() == (isTimeline ? 5U : 1U),
            "there are as many entries as asked");
    for (std::size_t i = 0; i < timeline.entries.size(); ++i)
        require(timeline.entries[i].date == asked.now + 60.0 * static_cast<double>(i),
                "entries are a minute apart");
    require(timeline.policy.has_value() == isTimeline, "only a timeline has a policy");
    if (isTimeline)
        require(timeline.policy->after == asked.now + 300, "it is asked again after five minutes");
}

/// Some cards as pictures. Not as PDF, which Cairo paints by the same calls as pixels: it loses
/// memory with each subset of a font for Chinese or Japanese.
void checkPictures(const DisplayList& list) {
    const auto pixels = drawing::paintPixels(list, typesetter());
    require(pixels.values.size() ==
                static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height),
            "a picture has all its pixels");
    for (const std::uint32_t pixel : pixels.values)
        for (const unsigned shift : {0U, 8U, 16U})
            require((pixel >> shift & 255U) <= pixel >> 24U, "no colour exceeds its alpha");
    require(drawing::encodePNG(pixels).starts_with("\x89PNG\r\n"), "a PNG file says so");

    const std::string svg = drawing::paintSVG(list, typesetter());
    require(foundation::isUTF8(svg) && svg.ends_with("</svg>\n"), "an SVG document is whole", svg);
    const std::string drawn = svg.substr(svg.find("</title>"));
    const bool hasWords = drawn.find("base64,") != drawn.npos;  // of letters without a meaning
    require(hasWords || (drawn.find("nan") == drawn.npos && drawn.find("inf") == drawn.npos),
            "an SVG document's numbers are numbers", svg);
}

void checkJSON(const DisplayList& list, const WidgetEntry& entry, WidgetFamily family) {
    const std::string json = drawing::paintJSON(list, {"kind", family, entry.date});
    const auto drawn = foundation::decodeJSON<DrawnCard>(json);
    require(bool{drawn}, "a card in JSON decodes", json);
    const DrawnCard& card = drawn.value();
    require(card.elements.size() == list.elements.size() && card.url == list.url &&
                card.scale == list.scale,
            "and nothing is lost", json);
}

DisplayList cardOf(const WidgetEntry& entry, const Case& asked, WidgetFamily family, double scale,
                   bool redacted = false) {
    views::Environment environment;
    environment.widgetFamily = family;
    environment.redaction.placeholder = redacted;
    environment.locale = asked.locale;
    environment.now = entry.date;
    const views::Size size{family == WidgetFamily::systemMedium ? 344.0 : 164.0, 164};
    return views::layOut(entry.view(), {size, views::EdgeInsets::all(16), 22, scale}, environment,
                         typesetter());
}

/// A locked card is the same whatever the file holds.
void checkLocked(const DisplayList& list, Widget widget, WidgetFamily family) {
    static std::map<std::tuple<Widget, WidgetFamily, double>, std::vector<views::Element>> first;
    const auto [known, isNew] = first.try_emplace({widget, family, list.scale}, list.elements);
    require(isNew || known->second == list.elements, "a locked card tells nothing");
}

/// One input in so many, by all of its bytes: pictures take longer than all the rest, and no two
/// run the same way, so that an input that could ask for one would always look new.
bool isPainted(const Case& asked) {
    constexpr std::size_t inputs = 32;
    return std::hash<std::string_view>{}(asked.bytes) % inputs == 0;
}

void checkCard(const WidgetEntry& entry, const Case& asked, const Expected& wanted,
               WidgetFamily family) {
    const double scale = scales[asked.look % scales.size()];
    const DisplayList list = cardOf(entry, asked, family, scale);
    checkDisplayList(list);
    const bool isRepeated = asked.look % 2 == 0;
    require(!isRepeated || list == cardOf(entry, asked, family, scale),
            "a view is laid out the same each time");
    checkLink(list.url, asked, wanted);
    checkJSON(list, entry, family);
    const DisplayList locked = cardOf(entry, asked, family, scale, true);
    checkDisplayList(locked);
    checkLocked(locked, asked.widget, family);
    if (isPainted(asked)) checkPictures(cardOf(entry, asked, family, 1));
}

/// None, one that no file has, or one of those that the widget offers.
std::optional<std::string> chosen(const WidgetConfiguration& widget, std::uint8_t which) {
    if (!widget.intent || which == 0) return std::nullopt;
    const auto offered = widget.intent->suggestedEntities();
    if (which == 1 || offered.empty()) return "no such pin";
    return offered[which % offered.size()].id;
}

}  // namespace

void fuzz(std::string_view bytes) {
    static const Container container;
    renewTypesetterSometimes();
    Choices choices{bytes};
    Case asked;
    const std::uint8_t which = choices.byte() % 3;
    asked.widget = static_cast<Widget>(which);
    const std::uint8_t request = choices.byte();
    asked.request = request % 4 == 3 ? Request::timeline : static_cast<Request>(request % 4);
    asked.isPreview = request >= 128;
    const std::uint8_t pin = choices.byte();
    asked.now = {choices.oneOf(clocks)};
    const auto& [identifier, zone] = choices.oneOf(locales);
    asked.locale = {identifier, zone};
    asked.look = choices.byte();
    asked.bytes = choices.rest();

    container.put(asked.widget, asked.bytes);
    const snapshot::Source source{.places = {.container = container.root()},
                                  .clock = [&] { return asked.now; }};
    const WidgetConfiguration widget = shell::TessaryWidgets{source}.body().at(which);
    asked.choice = chosen(widget, pin);
    const auto timeline = widget.answer(asked.request, {{}, asked.isPreview, asked.choice});
    const Expected wanted = expected(asked);
    checkDates(timeline, asked);
    checkStates(timeline, wanted);
    const WidgetEntry& entry = timeline.entries[asked.look / 16 % timeline.entries.size()];
    for (const WidgetFamily family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium})
        checkCard(entry, asked, wanted, family);
}

}  // namespace tessary::fuzz
