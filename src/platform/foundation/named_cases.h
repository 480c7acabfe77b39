// One table an enumeration: its cases and their names, for printing, parsing and iterating.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/foundation/joined.h"

namespace tessary::foundation {

template <class Case>
struct NamedCase {
    Case value{};
    std::string_view name{};
};

/// The cases of an enumeration in their own order. A case may have further names, listed after the
/// one that it prints as.
///
///     template <>
///     inline constexpr auto namesOf<WidgetFamily> = NamedCases<WidgetFamily, 3>{{
///         {WidgetFamily::systemSmall, "systemSmall"},
///         {WidgetFamily::systemMedium, "systemMedium"},
///         {WidgetFamily::systemMedium, "medium"},
///     }};
///
///     name(WidgetFamily::systemSmall)            // "systemSmall"
///     parse<WidgetFamily>("medium")              // WidgetFamily::systemMedium
///     knownNames<WidgetFamily>()                 // "systemSmall, systemMedium, medium"
template <class Case, std::size_t count>
using NamedCases = std::array<NamedCase<Case>, count>;

/// Specialise with the table of an enumeration.
template <class Case>
inline constexpr auto namesOf = NamedCases<Case, 0>{};

/// An enumeration with a table.
template <class Case>
concept NamedEnumeration = (std::is_enum_v<Case> && namesOf<Case>.size() > 0);

/// The first name in the table; empty for a value that is no case.
template <class Case>
constexpr std::string_view name(Case value) {
    for (const auto& entry : namesOf<Case>)
        if (entry.value == value) return entry.name;
    return {};
}

/// The last name in the table, which is the short one where there are several.
template <class Case>
constexpr std::string_view shortName(Case value) {
    std::string_view last;
    for (const auto& entry : namesOf<Case>)
        if (entry.value == value) last = entry.name;
    return last;
}

/// The case of that name, matched exactly; none for an unknown word.
template <class Case>
constexpr std::optional<Case> parse(std::string_view word) {
    for (const auto& entry : namesOf<Case>)
        if (entry.name == word) return entry.value;
    return std::nullopt;
}

/// All names, in the table's order, joined by ", ": what a message lists after an unknown word.
template <class Case>
std::string knownNames() {
    return joined(namesOf<Case>, ", ", [](const auto& entry) { return entry.name; });
}

/// The short names as a sentence has them: "png, svg or pdf".
template <class Case>
std::string choices() {
    std::string text, last;
    for (const auto& entry : namesOf<Case>) {
        if (entry.name != shortName(entry.value)) continue;
        if (!last.empty()) text += (text.empty() ? "" : ", ") + last;
        last = entry.name;
    }
    return text.empty() ? last : text + " or " + last;
}

}  // namespace tessary::foundation
