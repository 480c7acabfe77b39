// What a host asks the extension's process: one line of JSON (docs/protocol.md).
//
//     toJSON(Request{.id = 1, .request = "timeline", .widget = "alarms"})
//         // {"id":1,"request":"timeline","widget":"alarms","ids":null,...}
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/json_decoding.h"

namespace tessary::protocol {

/// A request's name for itself, which its reply repeats; none for one without.
using Identifier = std::variant<std::monostate, std::int64_t, std::string>;

/// What of a line is read before anything else, so that a reply can tell what was wrong with the
/// rest.
struct Address {
    Identifier id{};
};

/// Which of it counts depends on `request`.
struct Request {
    Identifier id{};
    std::string request{};
    std::optional<std::string> widget{};
    std::optional<std::vector<std::string>> ids{};
    std::optional<std::string> pin{};
    std::optional<bool> noPin{};
    std::optional<std::string> family{};
    std::optional<double> scale{};
    std::optional<bool> preview{};
    std::optional<bool> redacted{};
    std::optional<std::string> format{};
    std::optional<std::string> locale{};
    std::optional<std::string> timeZone{};
    std::optional<bool> display{};
};

}  // namespace tessary::protocol

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<protocol::Address> = std::tuple{
    Field{"id", &protocol::Address::id},
};

template <>
inline constexpr auto fieldsOf<protocol::Request> = std::tuple{
    Field{"id", &protocol::Request::id},
    Field{"request", &protocol::Request::request},
    Field{"widget", &protocol::Request::widget},
    Field{"ids", &protocol::Request::ids},
    Field{"pin", &protocol::Request::pin},
    Field{"noPin", &protocol::Request::noPin},
    Field{"family", &protocol::Request::family},
    Field{"scale", &protocol::Request::scale},
    Field{"preview", &protocol::Request::preview},
    Field{"redacted", &protocol::Request::redacted},
    Field{"format", &protocol::Request::format},
    Field{"locale", &protocol::Request::locale},
    Field{"timeZone", &protocol::Request::timeZone},
    Field{"display", &protocol::Request::display},
};

}  // namespace tessary::foundation
