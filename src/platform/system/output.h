// Writing results whole, or saying why not.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tessary::system {

/// Writes all the bytes to standard output. What went wrong, if anything.
std::optional<std::string> writeStandardOutput(std::string_view bytes);

/// Writes a file, replacing what it held. What went wrong, if anything.
std::optional<std::string> writeFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace tessary::system
