// The fixed texts of the system.
#pragma once

#include <string>
#include <string_view>

namespace tessary::locale {

/// The text of a localization key in the user's language. A key is its English text, which is the
/// only one there is; marking the fixed texts tells them from those that come out of files.
inline std::string localized(std::string_view key) { return std::string{key}; }

}  // namespace tessary::locale
