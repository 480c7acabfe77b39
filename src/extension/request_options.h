// What a request is asked with, and where it looks: what a command line or a host may say of it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "extension/widget_lookup.h"
#include "platform/foundation/date.h"
#include "platform/widgets/widget_configuration.h"

namespace tessary::extension {

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

}  // namespace tessary::extension
