// The extension's side of the protocol that docs/protocol.md describes: a request is a line of
// JSON, and so is its reply.
//
//     Extension extension{source, {"en_US", "UTC"}};
//     extension.answer(R"({"id": 7, "request": "timeline", "widget": "alarms"})", send)
//         // {"id":7,"kind":"com.tessary.desktop.widgets.alarms","request":"timeline",...}
//     extension.answer(R"({"id": 8, "request": "dance"})", send)
//         // {"id":8,"error":"request: 'dance' is not one of list, pins, placeholder, ..."}
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "extension/renderer.h"
#include "snapshot/source.h"

namespace tessary::extension {

/// Answers one request after the other. Keeps nothing of a request but texts that it has set, and
/// those only up to a limit.
class Extension {
public:
    /// `locale` is the one of requests that name none.
    Extension(snapshot::Source source, locale::UserLocale locale)
        : source_(std::move(source)), locale_(std::move(locale)) {}

    using Send = std::function<void(std::string)>;

    /// The reply, without a newline; of a very long one the end, `send` being handed what stands
    /// before it. Whatever the line holds, there is one; what is wrong with a request is told in
    /// it. Throws what `send` throws.
    std::string answer(std::string_view line, const Send& send);

private:
    snapshot::Source source_;
    locale::UserLocale locale_;
    Renderer renderer_{};
};

/// The reply to a line of which nothing is known but what is wrong with it.
std::string refusal(const std::string& error);

}  // namespace tessary::extension
