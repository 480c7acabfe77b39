#include "host/picture_format.h"

namespace tessary::host {

std::optional<PictureFormat> formatOf(const std::filesystem::path& file) {
    const std::string ending = file.extension().string();
    if (ending == ".txt") return PictureFormat::text;
    return ending.empty() ? std::nullopt : foundation::parse<PictureFormat>(ending.substr(1));
}

}  // namespace tessary::host
