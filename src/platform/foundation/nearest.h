// The known word that an unknown one was probably meant to be.
//
//     nearest("treshold", {"region", "threshold"})              // "threshold"
//     didYouMean("treshold", members, &Member::key)             // "; did you mean threshold?"
//     didYouMean("colour", members, &Member::key)               // ""
#pragma once

#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary::foundation {

/// The nearest of the words, by the letters to be added, left out, replaced or swapped with their
/// neighbour; of several the first. Capitals count as small letters. None where more than every
/// third letter would differ, unless a word goes on from the unknown one.
std::optional<std::string> nearest(std::string_view word, const std::vector<std::string>& known);

/// What a complaint about a word ends with: the question for the nearest, or nothing.
template <class Range, class Name = std::identity>
std::string didYouMean(std::string_view word, const Range& range, Name name = {}) {
    std::vector<std::string> names;
    names.reserve(std::size(range));
    for (const auto& each : range) names.emplace_back(std::invoke(name, each));
    const auto meant = nearest(word, names);
    return meant ? "; did you mean " + *meant + "?" : "";
}

}  // namespace tessary::foundation
