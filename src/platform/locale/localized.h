// The fixed texts of the system.
#pragma once

#include <string>
#include <string_view>

namespace tessary::locale {

/// The text of a localization key in the user's language. A key is its English text, which is the
/// only one there is; marking the fixed texts tells them from those that come out of files.
inline std::string localized(std::string_view key) { return std::string{key}; }

/// A phrase of the locale as a part of a text in another language: one that is written from right
/// to left is marked off, so that its digits and the text around stay in their places.
///
///     "2 watched · " + embedded("۵ دقیقه پیش")      // "2 watched · \u2068۵ دقیقه پیش\u2069"
std::string embedded(const std::string& phrase);

}  // namespace tessary::locale
