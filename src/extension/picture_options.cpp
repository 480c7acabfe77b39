#include "extension/picture_options.h"

#include <algorithm>

namespace tessary::extension {

std::optional<PictureFormat> formatOf(const std::filesystem::path& file) {
    std::string ending = file.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; });
    if (ending == ".txt") return PictureFormat::text;
    return ending.empty() ? std::nullopt : foundation::parse<PictureFormat>(ending.substr(1));
}

}  // namespace tessary::extension
