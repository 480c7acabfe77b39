// Writing results whole, or saying why not.
//
//     writeFile("alarms.png", bytes)         // a reader meets the old picture or the new one
//     saveFile("/home/ana/.config/tessary-widgets/desktop.json", text)      // makes the folder, too
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/foundation/result.h"

namespace tessary::system {

/// Writes all the bytes to standard output.
foundation::Result<void> writeStandardOutput(std::string_view bytes);

/// Writes a file beside its place and renames it, so that nobody ever reads a part of it, and a
/// failure leaves what was there. An old file's mode stays, a link is followed. Straight into its
/// place goes only what cannot be renamed over: a device, a FIFO, a file in a folder that may not
/// be written to.
foundation::Result<void> writeFile(const std::filesystem::path& file, std::string_view bytes);

/// The same for what must outlast a power cut, in a folder that is made where there is none, the
/// user's alone.
foundation::Result<void> saveFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace tessary::system
