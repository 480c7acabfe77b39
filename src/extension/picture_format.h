// The forms in which an entry can be rendered.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/foundation/named_cases.h"

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
