// The words of a call, understood.
//
//     const Call call = parseCommandLine({"render", "alarms", "--family", "medium"});
//     std::get<RenderCommand>(call).picture.family          // WidgetFamily::systemMedium
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/picture_format.h"
#include "platform/foundation/date.h"
#include "platform/widgets/provider_context.h"

namespace tessary::host {

/// Which entity a widget's configuration holds.
struct PinChoice {
    enum class Kind { defaultResult, none, identifier } kind{Kind::defaultResult};
    std::string identifier{};  ///< for an identifier; may be empty
    bool operator==(const PinChoice&) const = default;
};

struct RequestOptions {
    std::optional<std::filesystem::path> container{};
    std::optional<std::filesystem::path> info{};
    widgets::Request request{widgets::Request::timeline};
    bool preview{};
    PinChoice pin{};
    std::optional<foundation::Date> at{};
    std::optional<std::string> locale{};  ///< ICU form
    std::optional<std::string> timeZone{};
};

struct PictureOptions {
    widgets::WidgetFamily family{widgets::WidgetFamily::systemSmall};
    std::size_t entry{};
    bool redacted{};
    double scale{2};  ///< pixels per point, 1 to 4
    PictureFormat format{PictureFormat::png};
    std::optional<std::filesystem::path> output{};  ///< none: standard output
};

struct ListCommand {
    bool json{};
};
struct TimelineCommand {
    std::string widget{};  ///< as it was written; widget_lookup.h finds it
    RequestOptions request{};
    bool json{};
};
struct RenderCommand {
    std::string widget{};
    RequestOptions request{};
    PictureOptions picture{};
};
struct PinsCommand {
    std::string widget{};
    RequestOptions request{};
    std::vector<std::string> ids{};  ///< none: what an editor suggests
    bool json{};
};
struct CheckCommand {
    RequestOptions request{};
    bool json{};
    bool watch{};  ///< say it again whenever a file changes
};
/// Help or the version, asked for.
struct Information {
    std::string text{};
};
/// The call was wrong: one line that names the word at fault and what was expected.
struct UsageFault {
    std::string message{};
};

using Call = std::variant<ListCommand, TimelineCommand, RenderCommand, PinsCommand, CheckCommand,
                          Information, UsageFault>;

/// Understands the words behind the program's name. Never throws, prints or exits.
Call parseCommandLine(const std::vector<std::string>& words);

}  // namespace tessary::host
