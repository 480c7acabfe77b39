// What the desktop makes of the extension's replies (docs/protocol.md).
//
//     decodeReply(line, {.request = "timeline", ...})->timeline->entries.front().text
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/result.h"
#include "protocol/replies.h"
#include "protocol/request.h"

namespace tessary::client {

using protocol::Request;
using Pin = protocol::Entity;

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

/// One of the four is there: an error, a timeline (or a snapshot), pins, or the kinds (of which
/// there may be none).
struct Reply {
    std::int64_t id{};
    std::optional<std::string> error{};
    std::optional<Timeline> timeline{};
    std::optional<protocol::Suggestions> pins{};  ///< without a default where ids were given
    std::vector<protocol::Widget> kinds{};
};

/// What a line without its newline says in answer to that request; a fault where it is no such
/// reply, passes a limit, or has a picture that is no PNG or a widget without a size for a desktop.
foundation::Result<Reply> decodeReply(std::string_view line, const Request& request);

}  // namespace tessary::client
