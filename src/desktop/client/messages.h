// What the desktop makes of the extension's replies (docs/protocol.md).
//
//     decodeReply(line, {.request = "timeline", ...}, kinds)->timeline->entries.front().text
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
    std::optional<std::string> error{};  ///< one line, fit to be shown
    std::optional<Timeline> timeline{};
    std::optional<protocol::Suggestions> pins{};  ///< without a default where ids were given
    std::vector<protocol::Widget> kinds{};
};

/// What a line without its newline says in answer to that request, the extension having listed
/// those kinds. A fault where it is no such reply, passes a limit, or has
///   - a timeline of no entries or of more than there are,
///   - a picture that is no PNG of exactly the pixels that were asked for; as long as no list tells
///     how many these are, of more than a widget can have,
///   - a widget without a size for a desktop.
foundation::Result<Reply> decodeReply(std::string_view line, const Request& request,
                                      const std::vector<protocol::Widget>& kinds);

}  // namespace tessary::client
