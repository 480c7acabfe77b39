// Reading a whole file that another program may be writing.
//
//     readFile("alarms.json")          // std::string{"{...}"}, all of its bytes
//     readFile("no-such-file")         // FileFault{"No such file or directory"}
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>

namespace tessary::foundation {

/// A file larger than this counts as unreadable, in bytes. A snapshot is a few kilobytes.
inline constexpr std::size_t largestReadableFile = std::size_t{64} << 20U;

/// Why a file has no contents to give.
struct FileFault {
    std::string
        reason{};  ///< "No such file or directory", "not a regular file", "larger than 64 MiB"
    bool operator==(const FileFault&) const = default;
};

/// The bytes of a regular file, links followed. Anything else (a folder, a FIFO, a device, a
/// socket) is a fault and is never waited for. What is returned is what one pass from start to end
/// met: a file that shrinks gives what was there, one that grows is read to its end at the time, up
/// to the limit. A path that holds NUL names no file.
std::variant<std::string, FileFault> readFile(const std::filesystem::path& path);

}  // namespace tessary::foundation
