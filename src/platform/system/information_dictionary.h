// The extension's information dictionary: a property list, XML or binary.
//
//     InformationDictionary{"Info.plist"}.text("TessaryAppGroup")   // "A1B2C3.com.tessary.desktop"
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tessary::system {

/// A larger property list counts as unreadable, in bytes: nested deep enough, it would exhaust the
/// stack of the library that reads it. An information dictionary is a few kilobytes.
inline constexpr std::size_t largestPropertyList = std::size_t{256} << 10U;

/// Reads values of the property list in one file, afresh at each call.
class InformationDictionary {
public:
    explicit InformationDictionary(std::filesystem::path file) : file_(std::move(file)) {}

    /// The text under a key of the top-level dictionary. None when the file is missing, unreadable
    /// or no property list, when its top level is no dictionary, when the key is absent, or when
    /// its value is not text.
    std::optional<std::string> text(std::string_view key) const;

    const std::filesystem::path& file() const { return file_; }
    bool operator==(const InformationDictionary&) const = default;

private:
    std::filesystem::path file_;
};

}  // namespace tessary::system
