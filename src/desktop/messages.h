// What the desktop and the extension say to each other: a line for a request, a line for its reply
// (docs/protocol.md).
//
//     encode({.request = "timeline", .widget = "alarms", .family = "small"}, 1)
//     //
//     {"id":1,"request":"timeline","widget":"alarms","family":"small","scale":1,"redacted":false}
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary::desktop {

struct Request {
    std::string request{};             ///< "list" or "timeline"
    std::string widget{};              ///< a kind; what follows is for a timeline alone
    std::optional<std::string> pin{};  ///< without it the widget has its default
    std::string family{};
    int scale{1};
    bool redacted{};
};

/// The bytes of a PNG file. Entries of a timeline that look alike share one.
using Picture = std::shared_ptr<const std::string>;

struct Entry {
    double date{};
    std::optional<std::string> url{};
    std::string text{};  ///< for a screen reader
    Picture picture{};
};

struct Timeline {
    std::vector<Entry> entries{};
    double after{};  ///< when to ask again
};

struct WidgetKind {
    std::string kind{};
    std::string displayName{};
};

/// One of the three is there: an error, a timeline, or the kinds (of which there may be none).
struct Reply {
    std::int64_t id{};
    std::optional<std::string> error{};
    std::optional<Timeline> timeline{};
    std::vector<WidgetKind> kinds{};
};

/// The request's line, with its newline.
std::string encode(const Request& request, std::int64_t id);

/// What a line says, without its newline; nothing where it is no reply to such a request: no
/// object, no whole number for its id, members missing or of another kind, a picture that is no
/// PNG.
std::optional<Reply> decodeReply(std::string_view line);

}  // namespace tessary::desktop
