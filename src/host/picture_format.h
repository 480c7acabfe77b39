// The forms in which an entry can be rendered.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/foundation/named_cases.h"

namespace tessary::host {

enum class PictureFormat { png, svg, pdf, json, text };

/// The format that a file's ending names, in letters of either case; none for another ending or
/// none.
std::optional<PictureFormat> formatOf(const std::filesystem::path& file);

/// Whether a terminal had better not be sent it.
constexpr bool isPicture(PictureFormat format) {
    return format != PictureFormat::json && format != PictureFormat::text;
}

}  // namespace tessary::host

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::host::PictureFormat> =
    tessary::foundation::NamedCases<tessary::host::PictureFormat, 5>{{
        {tessary::host::PictureFormat::png, "png"},
        {tessary::host::PictureFormat::svg, "svg"},
        {tessary::host::PictureFormat::pdf, "pdf"},
        {tessary::host::PictureFormat::json, "json"},
        {tessary::host::PictureFormat::text, "text"},
    }};
