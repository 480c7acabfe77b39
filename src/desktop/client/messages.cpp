#include "desktop/client/messages.h"

#include <algorithm>
#include <utility>

namespace tessary::client {

using foundation::Fault;
using foundation::Result;

namespace {

constexpr std::string_view pngSignature = "\x89PNG";

Result<Reply> understood(protocol::Failure failure) { return Reply{.error = failure.error}; }

constexpr std::int64_t largestSide = 10'000;  // in points

bool isOfSomeSize(const protocol::Widget& widget) {
    const auto isSide = [](std::int64_t points) { return points >= 1 && points <= largestSide; };
    const auto isSize = [&](const auto& size) { return isSide(size.width) && isSide(size.height); };
    return !widget.sizes.empty() && std::ranges::all_of(widget.sizes, isSize);
}

Result<Reply> understood(protocol::List list) {
    if (!std::ranges::all_of(list.widgets, isOfSomeSize)) return Fault{"a widget of no size"};
    return Reply{.kinds = std::move(list.widgets)};
}

Result<Reply> understood(protocol::Suggestions pins) { return Reply{.pins = std::move(pins)}; }

Result<Reply> understood(protocol::Entities from) {
    return Reply{.pins = {{.type = from.type, .suggested = std::move(from.entities)}}};
}

Result<Reply> understood(protocol::Timeline from) {
    Timeline timeline;
    if (!from.policy && from.request != "snapshot") return Fault{"a timeline without a policy"};
    if (from.policy) timeline.after = from.policy->after;
    Picture last;
    for (protocol::Entry& entry : from.entries) {
        std::string& bytes = entry.picture.value;
        if (!bytes.starts_with(pngSignature)) return Fault{"a picture that is no PNG"};
        if (!last || *last != bytes) last = std::make_shared<const std::string>(std::move(bytes));
        timeline.entries.push_back({entry.date, std::move(entry.url), std::move(entry.text), last});
    }
    return Reply{.timeline = std::move(timeline)};
}

template <class Content>
Result<Reply> decoded(std::string_view line) {
    auto content = foundation::decodeJSON<protocol::Reply<Content>>(line, protocol::replyLimits);
    if (!content) return Fault{content.fault().message()};
    const auto* const id = std::get_if<std::int64_t>(&content->id);
    if (!id) return Fault{"an id that is none of the desktop's"};
    return understood(Content{std::move(*content)}).transform([id = *id](Reply reply) {
        reply.id = id;
        return reply;
    });
}

Result<Reply> decodedAs(const Request& request, std::string_view line) {
    if (request.request == "list") return decoded<protocol::List>(line);
    if (request.request != "pins") return decoded<protocol::Timeline>(line);
    return request.ids ? decoded<protocol::Entities>(line) : decoded<protocol::Suggestions>(line);
}

}  // namespace

Result<Reply> decodeReply(std::string_view line, const Request& request) {
    auto reply = decodedAs(request, line);
    if (reply) return reply;
    auto failure = decoded<protocol::Failure>(line);
    return failure ? failure : reply;
}

}  // namespace tessary::client
