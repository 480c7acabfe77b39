// Any bytes as what the extension's process writes to a desktop that has asked for something: lines
// are cut alike however the bytes come, and what is understood of one keeps to every limit.
#include <string>
#include <vector>

#include "desktop/client/line_reader.h"
#include "desktop/client/messages.h"
#include "desktop/client/png.h"
#include "fuzzer.h"

namespace tessary::fuzz {
namespace {

using client::PixelSize, client::Request;
using Kinds = std::vector<protocol::Widget>;

constexpr std::size_t longest = 10'000;

/// The lines, and of one that is too long nothing.
std::vector<std::string> linesOf(std::string_view bytes, std::size_t atOnce) {
    std::vector<std::string> lines;
    client::LineReader reader{longest};
    const auto take = [&](std::string_view line) { lines.emplace_back(line); };
    for (bool goesOn = true; goesOn && !bytes.empty();) {
        goesOn = reader.feed(bytes.substr(0, atOnce), take);
        bytes.remove_prefix(std::min(bytes.size(), atOnce));
        require(reader.open().size() <= longest, "no more is kept than a line may have");
    }
    return lines;
}

void checkTimeline(const client::Timeline& timeline, const PixelSize& asked) {
    const auto count = timeline.entries.size();
    require(count >= 1 && count <= protocol::mostEntries, "as many entries as there may be");
    for (const auto& entry : timeline.entries) {
        const auto size = client::pngSize(*entry.picture);
        require(size && *size == asked, "a picture of the pixels that were asked for");
    }
}

void checkReply(const client::Reply& reply, const PixelSize& asked) {
    const int answers = int{reply.error.has_value()} + int{reply.timeline.has_value()} +
                        int{reply.pins.has_value()};
    require(answers + int{!reply.kinds.empty()} <= 1, "a reply says one thing");
    if (reply.error) require(isOneLine(*reply.error), "an error is one line", *reply.error);
    if (reply.timeline) checkTimeline(*reply.timeline, asked);
    for (const auto& kind : reply.kinds)
        for (const auto& [family, name, width, height] : kind.sizes)
            require(
                std::min(width, height) >= 1 && std::max(width, height) <= protocol::longestSide,
                "a widget of a size for a desktop");
}

}  // namespace

void fuzz(std::string_view bytes) {
    const Request requests[] = {
        {.request = "timeline", .widget = "k", .family = "f", .scale = 2},
        {.request = "snapshot", .widget = "k", .family = "f", .scale = 2},
        {.request = "list"},
        {.request = "pins", .widget = "k"},
        {.request = "pins", .widget = "k", .ids = {{"b"}}},
    };
    const Kinds kinds{{.kind = "k", .sizes = {{.family = "f", .width = 9, .height = 4}}}};
    Choices choices{bytes};
    const auto& request = choices.oneOf(requests);
    const auto lines = linesOf(choices.rest(), choices.rest().size() + 1);
    require(lines == linesOf(choices.rest(), 1 + bytes.size() / 7),
            "lines come whole or in pieces");
    for (const auto& line : lines)
        if (const auto reply = client::decodeReply(line, request, kinds))
            checkReply(*reply, {18, 8});
}

}  // namespace tessary::fuzz
