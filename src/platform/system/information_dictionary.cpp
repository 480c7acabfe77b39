#include "platform/system/information_dictionary.h"

#include <cstdint>
#include <memory>
#include <plist/plist.h>
#include <type_traits>

#include "platform/system/binary_property_list.h"
#include "platform/system/surroundings.h"

namespace tessary::system {
namespace {

struct FreePropertyList {
    void operator()(void* list) const { plist_free(list); }
};
using PropertyList = std::unique_ptr<std::remove_pointer_t<plist_t>, FreePropertyList>;

/// Nothing where the file is no property list.
PropertyList readPropertyList(const std::filesystem::path& file) {
    const auto contents = surroundings().read(file);
    if (!contents || contents->size() > largestPropertyList) return nullptr;
    if (isBinaryPropertyList(*contents) && !isSoundBinaryPropertyList(*contents)) return nullptr;
    plist_t list = nullptr;
    plist_from_memory(contents->data(), static_cast<std::uint32_t>(contents->size()), &list);
    return PropertyList{list};
}

}  // namespace

std::optional<std::string> InformationDictionary::text(std::string_view key) const {
    if (key.find('\0') != std::string_view::npos) return std::nullopt;
    const auto list = readPropertyList(file_);
    if (!list || plist_get_node_type(list.get()) != PLIST_DICT) return std::nullopt;
    const plist_t value = plist_dict_get_item(list.get(), std::string{key}.c_str());
    if (value == nullptr || plist_get_node_type(value) != PLIST_STRING) return std::nullopt;
    std::uint64_t length = 0;
    const char* const characters = plist_get_string_ptr(value, &length);
    return std::string(characters, length);
}

}  // namespace tessary::system
