#include "extension/picture_options.h"

#include "platform/foundation/letters.h"

namespace tessary::extension {

std::optional<PictureFormat> formatOf(const std::filesystem::path& file) {
    const std::string ending = foundation::inSmallLetters(file.extension().native());
    if (ending == ".txt") return PictureFormat::text;
    return ending.empty() ? std::nullopt : foundation::parse<PictureFormat>(ending.substr(1));
}

}  // namespace tessary::extension
