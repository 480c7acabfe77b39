// Reading a whole file that another program may be writing.
//
//     readFile("alarms.json")          // std::string{"{...}"}, all of its bytes
//     readFile("no-such-file")         // Fault{"No such file or directory"}
#pragma once

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>

#include "platform/foundation/result.h"

namespace tessary::system {

/// A file larger than this counts as unreadable, in bytes. A snapshot is a few kilobytes.
inline constexpr std::size_t largestReadableFile = std::size_t{16} << 20U;

/// A file's contents, or why there are none: "No such file or directory", "not a regular file",
/// "larger than 16 MiB".
using FileContents = foundation::Result<std::string>;

/// The fault of a path under which there is nothing.
foundation::Fault absent();

/// What a system call answers in the end, however often a signal interrupts it.
template <class Call>
auto uninterrupted(const Call& call) {
    auto answer = call();
    while (answer < 0 && errno == EINTR) answer = call();
    return answer;
}

/// Owns an open file descriptor; a negative one is none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    int number() const { return number_; }
    /// Closes it now, for whoever wants to know whether all that was written has arrived.
    bool close();

private:
    int number_;
};

/// Opens a regular file for reading, links followed. Anything else (a folder, a FIFO, a device, a
/// socket) is a fault and is never waited for, nor is a path that holds NUL.
foundation::Result<Descriptor> openFile(const std::filesystem::path& path);

/// The bytes of a file from start to end. One that a program has open for writing is waited
/// for, a second at most, and then read as it stands if it has not changed for half a second; else
/// it is a fault. A writer that opens the file while it is read waits for the reading to end. Where
/// the file system, or who owns the file, lets nobody find that out (by a read lease), a file
/// counts as being written to for 20 milliseconds after its last change.
FileContents readFile(const std::filesystem::path& path);

}  // namespace tessary::system
