// What the extension's process answers: one line of JSON (docs/protocol.md).
//
//     toJSON(Reply<Failure>{{"no such widget"}, 7})       // {"id":7,"error":"no such widget"}
//     decodeJSON<Reply<List>>(line, replyLimits).value().widgets.front().kind
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/json_decoding.h"
#include "protocol/request.h"

namespace tessary::protocol {

/// What a host takes of a reply. Of a file of 16 MiB, the most that is read, 152,000 pins are
/// listed in 610,000 values, 5 levels deep; without the display states, only a text of more than 12
/// MiB takes a timeline, which has it five times, beyond this.
inline constexpr foundation::Limits replyLimits{
    .bytes = std::size_t{64} << 20U, .depth = 32, .values = 1'000'000};

/// As many entries as a timeline has at the most.
inline constexpr std::size_t mostEntries = 5;

/// No widget is wider or higher, in points.
inline constexpr std::int64_t longestSide = 1'000;

/// What is wrong with a request.
struct Failure {
    std::string error{};
};

/// A size that a widget can have, in points.
struct Size {
    std::string family{};
    std::string name{};  ///< the family's, for short
    std::int64_t width{};
    std::int64_t height{};
    bool operator==(const Size&) const = default;
};

/// A widget of the bundle.
struct Widget {
    std::string kind{};
    std::string name{};                   ///< the kind's, for short
    std::string configuration{};          ///< "static" or "intent"
    std::optional<std::string> intent{};  ///< its title
    bool takesPin{};
    std::string displayName{};
    std::string description{};
    std::vector<std::string> families{};
    std::vector<Size> sizes{};  ///< one for each family
    bool operator==(const Widget&) const = default;
};

struct List {
    std::string bundle{};
    std::vector<Widget> widgets{};
};

/// Something that a widget can be set to show.
struct Entity {
    std::string id{};
    std::string name{};
    std::string detail{};
    bool operator==(const Entity&) const = default;
};

/// What there is to choose from.
struct Suggestions {
    std::string type{};               ///< what an entity is called
    std::optional<Entity> initial{};  ///< what a new widget takes
    std::vector<Entity> suggested{};
    bool operator==(const Suggestions&) const = default;
};

/// The entities of identifiers that were asked for.
struct Entities {
    std::string type{};
    std::vector<Entity> entities{};
};

struct Entry {
    double date{};                  ///< when it is to be shown, as all dates in seconds since 1970
    foundation::AnyJSON display{};  ///< the display state
    std::optional<std::string> url{};
    std::string text{};  ///< for a screen reader
    foundation::Bytes picture{};
};

struct Policy {
    double after{};
};

/// The answer to a placeholder, a snapshot or a timeline.
struct Timeline {
    std::string kind{};
    std::string request{};
    std::string family{};
    double scale{};
    bool redacted{};
    std::string format{};
    std::vector<Entry> entries{};
    std::optional<Policy> policy{};  ///< of a timeline alone
};

/// Any of these, for a request.
template <class Content>
struct Reply : Content {
    Identifier id{};
};

}  // namespace tessary::protocol

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<protocol::Failure> = std::tuple{
    Field{"error", &protocol::Failure::error},
};

template <>
inline constexpr auto fieldsOf<protocol::Size> = std::tuple{
    Field{"family", &protocol::Size::family},
    Field{"name", &protocol::Size::name},
    Field{"width", &protocol::Size::width},
    Field{"height", &protocol::Size::height},
};

template <>
inline constexpr auto fieldsOf<protocol::Widget> = std::tuple{
    Field{"kind", &protocol::Widget::kind},
    Field{"name", &protocol::Widget::name},
    Field{"configuration", &protocol::Widget::configuration},
    Field{"intent", &protocol::Widget::intent, Key::always},
    Field{"takesPin", &protocol::Widget::takesPin},
    Field{"displayName", &protocol::Widget::displayName},
    Field{"description", &protocol::Widget::description},
    Field{"families", &protocol::Widget::families},
    Field{"sizes", &protocol::Widget::sizes},
};

template <>
inline constexpr auto fieldsOf<protocol::List> = std::tuple{
    Field{"bundle", &protocol::List::bundle},
    Field{"widgets", &protocol::List::widgets},
};

template <>
inline constexpr auto fieldsOf<protocol::Entity> = std::tuple{
    Field{"id", &protocol::Entity::id},
    Field{"name", &protocol::Entity::name},
    Field{"detail", &protocol::Entity::detail},
};

template <>
inline constexpr auto fieldsOf<protocol::Suggestions> = std::tuple{
    Field{"type", &protocol::Suggestions::type},
    Field{"default", &protocol::Suggestions::initial, Key::always},
    Field{"suggested", &protocol::Suggestions::suggested},
};

template <>
inline constexpr auto fieldsOf<protocol::Entities> = std::tuple{
    Field{"type", &protocol::Entities::type},
    Field{"entities", &protocol::Entities::entities},
};

template <>
inline constexpr auto fieldsOf<protocol::Entry> = std::tuple{
    Field{"date", &protocol::Entry::date},
    Field{"display", &protocol::Entry::display},
    Field{"url", &protocol::Entry::url, Key::always},
    Field{"text", &protocol::Entry::text},
    Field{"picture", &protocol::Entry::picture},
};

template <>
inline constexpr auto fieldsOf<protocol::Policy> = std::tuple{
    Field{"after", &protocol::Policy::after},
};

template <>
inline constexpr auto fieldsOf<protocol::Timeline> = std::tuple{
    Field{"kind", &protocol::Timeline::kind},
    Field{"request", &protocol::Timeline::request},
    Field{"family", &protocol::Timeline::family},
    Field{"scale", &protocol::Timeline::scale},
    Field{"redacted", &protocol::Timeline::redacted},
    Field{"format", &protocol::Timeline::format},
    Field{"entries", &protocol::Timeline::entries},
    Field{"policy", &protocol::Timeline::policy, Key::always},
};

template <class Content>
inline constexpr auto fieldsOf<protocol::Reply<Content>> =
    std::tuple_cat(std::tuple{Field{"id", &protocol::Reply<Content>::id}}, fieldsOf<Content>);

}  // namespace tessary::foundation
