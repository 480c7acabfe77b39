#include "desktop/client/messages.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "desktop/client/png.h"
#include "platform/foundation/visible_text.h"

namespace tessary::client {

using foundation::Fault;
using foundation::Result;

namespace {

using protocol::longestSide;
using Kinds = std::vector<protocol::Widget>;

/// What an answer is held to.
struct Asked {
    const Request& request;
    const Kinds& kinds;
};

/// Where the extension has listed the widget.
std::optional<protocol::Size> sizeOf(const Request& request, const Kinds& kinds) {
    for (const auto& kind : kinds) {
        if (kind.kind != request.widget && kind.name != request.widget) continue;
        for (const auto& size : kind.sizes)
            if (size.family == request.family || size.name == request.family) return size;
    }
    return std::nullopt;
}

Result<void> fits(std::string_view picture, const Asked& asked) {
    const auto found = pngSize(picture);
    if (!found) return found.fault();
    const auto pixels = [&](std::int64_t points) {
        return std::llround(static_cast<double>(points) * asked.request.scale.value_or(1));
    };
    const auto size = sizeOf(asked.request, asked.kinds);
    const auto most = pixels(longestSide);
    if (!size && found->width <= most && found->height <= most) return {};
    const auto wanted =
        size ? PixelSize{pixels(size->width), pixels(size->height)} : PixelSize{most, most};
    if (*found == wanted) return {};
    return Fault{"a picture of " + describe(*found) + " pixels, not " + describe(wanted)};
}

Result<Reply> understood(const protocol::Failure& failure, const Asked&) {
    return Reply{.error = foundation::visible(failure.error)};
}

bool isOfSomeSize(const protocol::Widget& widget) {
    const auto isSide = [](std::int64_t points) { return points >= 1 && points <= longestSide; };
    const auto isSize = [&](const auto& size) { return isSide(size.width) && isSide(size.height); };
    return !widget.sizes.empty() && std::ranges::all_of(widget.sizes, isSize);
}

Result<Reply> understood(protocol::List list, const Asked&) {
    if (!std::ranges::all_of(list.widgets, isOfSomeSize)) return Fault{"a widget of no size"};
    return Reply{.kinds = std::move(list.widgets)};
}

Result<Reply> understood(protocol::Suggestions pins, const Asked&) {
    return Reply{.pins = std::move(pins)};
}

Result<Reply> understood(protocol::Entities from, const Asked&) {
    return Reply{.pins = {{.type = from.type, .suggested = std::move(from.entities)}}};
}

Result<Reply> understood(protocol::Timeline from, const Asked& asked) {
    Timeline timeline;
    if (from.entries.empty() || from.entries.size() > protocol::mostEntries)
        return Fault{"a timeline of " + std::to_string(from.entries.size()) + " entries"};
    if (!from.policy && from.request != "snapshot") return Fault{"a timeline without a policy"};
    if (from.policy) timeline.after = from.policy->after;
    Picture last;
    for (protocol::Entry& entry : from.entries) {
        std::string& bytes = entry.picture.value;
        if (!last || *last != bytes) {
            if (const auto fit = fits(bytes, asked); !fit) return fit.fault();
            last = std::make_shared<const std::string>(std::move(bytes));
        }
        timeline.entries.push_back({entry.date, std::move(entry.url), std::move(entry.text), last});
    }
    return Reply{.timeline = std::move(timeline)};
}

template <class Content>
Result<Reply> decoded(std::string_view line, const Asked& asked) {
    auto content = foundation::decodeJSON<protocol::Reply<Content>>(line, protocol::replyLimits);
    if (!content) return Fault{content.fault().message()};
    const auto* const id = std::get_if<std::int64_t>(&content->id);
    if (!id) return Fault{"an id that is none of the desktop's"};
    return understood(Content{std::move(*content)}, asked).transform([id = *id](Reply reply) {
        reply.id = id;
        return reply;
    });
}

Result<Reply> decodedAs(std::string_view line, const Asked& asked) {
    const auto& request = asked.request;
    if (request.request == "list") return decoded<protocol::List>(line, asked);
    if (request.request != "pins") return decoded<protocol::Timeline>(line, asked);
    return request.ids ? decoded<protocol::Entities>(line, asked)
                       : decoded<protocol::Suggestions>(line, asked);
}

}  // namespace

Result<Reply> decodeReply(std::string_view line, const Request& request, const Kinds& kinds) {
    const Asked asked{request, kinds};
    auto reply = decodedAs(line, asked);
    if (reply) return reply;
    auto failure = decoded<protocol::Failure>(line, asked);
    return failure ? failure : reply;
}

}  // namespace tessary::client
