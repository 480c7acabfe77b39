// The words of a call, understood.
//
//     const auto call = parseCommandLine({"render", "alarms", "--family", "medium"});
//     std::get<RenderCommand>(*call).picture.family         // WidgetFamily::systemMedium
//     parseCommandLine({"draw"}).fault().message()          // "unknown command 'draw': expected …"
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "command/check_report.h"
#include "extension/picture_options.h"
#include "extension/request_options.h"
#include "extension/serve.h"
#include "platform/foundation/result.h"

namespace tessary::command {

using extension::PictureOptions;
using extension::PinChoice;
using extension::RequestOptions;

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
using ServeCommand = extension::ServeOptions;
struct CheckCommand {
    RequestOptions request{};
    bool json{};
    bool watch{};  ///< say it again whenever a file changes
    Strictness strictness{};
};
/// Help or the version, asked for.
struct Information {
    std::string text{};
};

using Call = std::variant<ListCommand, TimelineCommand, RenderCommand, PinsCommand, CheckCommand,
                          ServeCommand, Information>;

/// Understands the words behind the program's name. A fault is one line that names the word at
/// fault and what was expected.
foundation::Result<Call> parseCommandLine(const std::vector<std::string>& words);

}  // namespace tessary::command
