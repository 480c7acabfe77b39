// Whether a binary property list can be handed to a library that trusts its structure.
//
// In the binary form an object is named by its number, so several may share one, and the library
// copies it for each: thirty lists that each hold the next one twice fill any memory from 200
// bytes. Nor does it bound how deep objects nest.
//
//     isBinaryPropertyList(bytes) && !isSoundBinaryPropertyList(bytes)      // leave it alone
#pragma once

#include <cstddef>
#include <string_view>

namespace tessary::system {

/// Whether the bytes claim to be a binary property list of any version.
bool isBinaryPropertyList(std::string_view bytes);

/// How deep the objects of a sound property list may nest.
inline constexpr std::size_t deepestPropertyList = 64;
/// How many bytes they may take together, each counted as often as it is used.
inline constexpr std::size_t largestUnfoldedPropertyList = std::size_t{256} << 10U;

/// Whether everything that the top object reaches lies inside the bytes, is of a known kind, has
/// text for its keys, and unfolds to no more than the two limits above.
bool isSoundBinaryPropertyList(std::string_view bytes);

}  // namespace tessary::system
