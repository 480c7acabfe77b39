#include "platform/system/information_dictionary.h"

#include "platform/foundation/json_decoding.h"
#include "platform/system/surroundings.h"

namespace tessary::system {

struct Information {
    std::optional<std::string> appGroup{};
};

}  // namespace tessary::system

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::system::Information> =
    std::tuple{Field{"TessaryAppGroup", &tessary::system::Information::appGroup}};

namespace tessary::system {

std::optional<std::string> InformationDictionary::appGroup() const {
    const auto contents = surroundings().read(file_);
    if (!contents) return std::nullopt;
    auto information = foundation::decodeJSON<Information>(*contents);
    return information ? std::move(information->appGroup) : std::nullopt;
}

}  // namespace tessary::system
