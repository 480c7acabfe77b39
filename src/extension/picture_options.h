// What the picture of an entry is to be like.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>

#include "extension/picture_format.h"
#include "platform/locale/user_locale.h"
#include "platform/widgets/provider_context.h"

namespace tessary::extension {

struct PictureOptions {
    widgets::WidgetFamily family{widgets::WidgetFamily::systemSmall};
    std::size_t entry{};
    bool redacted{};
    double scale{2};  ///< pixels per point, 1 to 4
    PictureFormat format{PictureFormat::png};
    std::optional<std::filesystem::path> output{};  ///< none: standard output
    locale::UserLocale locale{};                    ///< whose words, numbers and times
};

}  // namespace tessary::extension
