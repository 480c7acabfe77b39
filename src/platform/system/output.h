// Writing results whole, or saying why not.
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/foundation/result.h"

namespace tessary::system {

/// Writes all the bytes to standard output.
foundation::Result<void> writeStandardOutput(std::string_view bytes);

/// Writes a file, replacing what it held.
foundation::Result<void> writeFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace tessary::system
