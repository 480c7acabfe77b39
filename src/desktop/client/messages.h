// What the desktop and the extension say to each other: a line for a request, a line for its reply
// (docs/protocol.md).
//
//     encode({.request = "timeline", .widget = "alarms", .family = "small"}, 1)
//         // {"id":1,"request":"timeline","widget":"alarms","family":"small",
//         //  "scale":1,"redacted":false}, and the line's end
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/places/placed_widget.h"

namespace tessary::client {

struct Request {
    std::string request{};             ///< "list", "pins", "snapshot" or "timeline"
    std::string widget{};              ///< a kind, for all but list
    std::vector<std::string> ids{};    ///< for pins: these, instead of what there is to choose from
    std::optional<std::string> pin{};  ///< without it the widget has its default
    std::string family{};              ///< as all that follows, for a snapshot or a timeline
    int scale{1};
    bool redacted{};
    bool preview{};  ///< for a gallery, where sample content beats none
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
    /// When to ask again; of a snapshot, never.
    double after{std::numeric_limits<double>::infinity()};
};

struct WidgetKind {
    std::string kind{};
    std::string displayName{};
    std::string description{};
    std::vector<places::Family> families{};  ///< those of its families that a desktop has
    bool configurable{};                     ///< shows a pin that a user chooses
    bool operator==(const WidgetKind&) const = default;
};

/// An alarm or a metric that a widget can be set to show; each text may be empty.
struct Pin {
    std::string id{};
    std::string name{};
    std::string detail{};
    bool operator==(const Pin&) const = default;
};

struct Pins {
    std::string type{};            ///< what a pin is called
    std::optional<Pin> initial{};  ///< what a new widget takes; left out where ids were given
    std::vector<Pin> pins{};
    bool operator==(const Pins&) const = default;
};

/// One of the four is there: an error, a timeline (or a snapshot), pins, or the kinds (of which
/// there may be none).
struct Reply {
    std::int64_t id{};
    std::optional<std::string> error{};
    std::optional<Timeline> timeline{};
    std::optional<Pins> pins{};
    std::vector<WidgetKind> kinds{};
};

/// The request's line, with its newline.
std::string encode(const Request& request, std::int64_t id);

/// What a line says, without its newline; nothing where it is no reply to such a request: no
/// object, no whole number for its id, members missing or of another kind, a picture that is no
/// PNG.
std::optional<Reply> decodeReply(std::string_view line);

}  // namespace tessary::client
