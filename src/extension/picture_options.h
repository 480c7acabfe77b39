// What the picture of an entry is to be like.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>

#include "platform/foundation/named_cases.h"
#include "platform/locale/user_locale.h"
#include "platform/widgets/provider_context.h"

namespace tessary::extension {

enum class PictureFormat { png, svg, pdf, json, text };

/// The format that a file's ending names, in letters of either case; none for another ending or
/// none.
std::optional<PictureFormat> formatOf(const std::filesystem::path& file);

/// Whether a terminal had better not be sent it.
constexpr bool isPicture(PictureFormat format) {
    return format != PictureFormat::json && format != PictureFormat::text;
}

/// Whether it says when its entry is dated, so that no two entries have the same.
constexpr bool bearsDate(PictureFormat format) {
    return format == PictureFormat::pdf || format == PictureFormat::json;
}

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

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::extension::PictureFormat> =
    tessary::foundation::NamedCases<tessary::extension::PictureFormat, 5>{{
        {tessary::extension::PictureFormat::png, "png"},
        {tessary::extension::PictureFormat::svg, "svg"},
        {tessary::extension::PictureFormat::pdf, "pdf"},
        {tessary::extension::PictureFormat::json, "json"},
        {tessary::extension::PictureFormat::text, "text"},
    }};
