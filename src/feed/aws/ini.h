// The format of the AWS tools' two files: sections of names and values.
//
//     parseINI("[profile prod]\nregion = eu-west-1\n").front().settings.at("region")  // "eu-west-1"
//
// Read as those tools do: "=" or ":" behind a name, which counts in small letters; a line that
// begins with "#" or ";" is a remark, one that begins with a blank belongs to the setting before.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessary::aws {

using Settings = std::map<std::string, std::string>;

struct Section {
    std::string kind{};  ///< "profile", "sso-session"; empty where it has one word alone
    std::string name{};  ///< "prod"; without the quotes that it may stand in
    Settings settings{};
    bool operator==(const Section&) const = default;
};

/// The sections in their order; of a setting given twice the last counts. A line that says nothing
/// in this format is passed over, as is what stands before the first section. A setting's nested
/// lines are left out: none of what is read here has any.
std::vector<Section> parseINI(std::string_view text);

}  // namespace tessary::aws
