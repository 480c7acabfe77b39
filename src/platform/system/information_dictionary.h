// The extension's information dictionary: a JSON object, of which one member is read.
//
//     {"TessaryAppGroup": "A1B2C3.com.tessary.desktop"}
//
//     InformationDictionary{"info.json"}.appGroup()         // "A1B2C3.com.tessary.desktop"
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace tessary::system {

/// Reads values of the dictionary in one file, afresh at each call.
class InformationDictionary {
public:
    explicit InformationDictionary(std::filesystem::path file) : file_(std::move(file)) {}

    /// The text under "TessaryAppGroup". None when the file is missing, unreadable or no JSON, when
    /// it holds no object, when the key is absent, or when its value is no text.
    std::optional<std::string> appGroup() const;

    const std::filesystem::path& file() const { return file_; }
    bool operator==(const InformationDictionary&) const = default;

private:
    std::filesystem::path file_;
};

}  // namespace tessary::system
