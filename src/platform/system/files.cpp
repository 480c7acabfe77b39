#include "platform/system/files.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace tessary::system {

using foundation::Fault;

namespace {

Fault systemFault(int error) { return {std::system_category().message(error)}; }

Fault notRegular() { return {"not a regular file"}; }

Fault tooLarge() { return {"larger than " + std::to_string(largestReadableFile >> 20U) + " MiB"}; }

/// `expected` is a guess at the size: the file may have become longer or shorter since. One byte
/// beyond it is asked for, so that a file which keeps its size needs no second buffer.
FileContents readToEnd(int file, std::size_t expected) {
    std::string bytes(expected + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = uninterrupted(
            [&] { return ::read(file, bytes.data() + length, bytes.size() - length); });
        if (count < 0) return systemFault(errno);
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        if (length > largestReadableFile) return tooLarge();
        if (length == bytes.size())
            bytes.resize(
                std::min(std::max<std::size_t>(length * 2, 4096), largestReadableFile + 1));
    }
    bytes.resize(length);
    return bytes;
}

FileContents readOnePass(int file) {
    struct stat status {};
    if (::fstat(file, &status) != 0) return systemFault(errno);
    if (std::cmp_greater(status.st_size, largestReadableFile)) return tooLarge();
    if (::lseek(file, 0, SEEK_SET) != 0) return systemFault(errno);
    return readToEnd(file, static_cast<std::size_t>(status.st_size));
}

/// While it is held, nobody has the file open for writing: who wants to waits.
class ReadLease {
public:
    explicit ReadLease(int file) : file_(file) {
        // Tells of a waiting writer, by default with a signal that ends the process.
        ::fcntl(file, F_SETSIG, SIGURG);
        refusal_ = ::fcntl(file, F_SETLEASE, F_RDLCK) == 0 ? 0 : errno;
    }
    ~ReadLease() {
        if (refusal_ == 0) ::fcntl(file_, F_SETLEASE, F_UNLCK);
    }
    ReadLease(const ReadLease&) = delete;
    ReadLease& operator=(const ReadLease&) = delete;

    /// Why there is none, 0 if there is: EAGAIN where the file is open for writing, another where
    /// files like this cannot be leased.
    int refusal() const { return refusal_; }

private:
    int file_;
    int refusal_{};
};

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::int64_t longestWait = 1000 * millisecond;
/// A write gives a file its time before it changes the first byte, and may be held up after that.
constexpr std::int64_t settled = 20 * millisecond;
/// Between two writes of a program that keeps the file open, which is then taken to have finished.
constexpr std::int64_t quiet = 500 * millisecond;

std::int64_t nanoseconds(const timespec& time) {
    return time.tv_sec * 1'000'000'000 + time.tv_nsec;
}

std::int64_t now(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return nanoseconds(time);
}

void pause() {
    const timespec time{0, 2 * millisecond};
    ::nanosleep(&time, nullptr);
}

/// The time of a file's last change, in nanoseconds; its size with it.
struct Revision {
    std::int64_t changed{};
    off_t size{};
    bool operator==(const Revision&) const = default;
};

Revision revision(int file) {
    struct stat status {};
    ::fstat(file, &status);
    return {nanoseconds(status.st_mtim), status.st_size};
}

/// What the file holds, if it was last changed so long ago and is not while it is read: where
/// nobody can be kept from writing, and where a lease was lost to one who waited too long.
std::optional<FileContents> readUnchanged(int file, std::int64_t sinceAtLeast) {
    const Revision before = revision(file);
    const std::int64_t age = now(CLOCK_REALTIME) - before.changed;
    if (age >= 0 && age < sinceAtLeast) return std::nullopt;  // below 0: dated ahead
    FileContents contents = readOnePass(file);
    if (revision(file) == before) return contents;
    return std::nullopt;
}

/// Nothing where it is being written just now.
std::optional<FileContents> readNow(int file) {
    const ReadLease lease{file};
    if (lease.refusal() == EAGAIN) return std::nullopt;
    return readUnchanged(file, lease.refusal() == 0 ? 0 : settled);
}

FileContents readWaiting(const Descriptor& file) {
    const std::int64_t last = now(CLOCK_MONOTONIC) + longestWait;
    do {
        if (auto contents = readNow(file.number())) return *std::move(contents);
        pause();
    } while (now(CLOCK_MONOTONIC) < last);
    if (auto contents = readUnchanged(file.number(), quiet)) return *std::move(contents);
    return Fault{"being written to all the time"};
}

}  // namespace

Fault absent() { return systemFault(ENOENT); }

Descriptor::~Descriptor() { close(); }

bool Descriptor::close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

foundation::Result<Descriptor> openFile(const std::filesystem::path& path) {
    if (path.native().find('\0') != std::string::npos) return systemFault(EINVAL);

    // Looked at before it is opened, because opening some devices does something; and looked at
    // again, because the name may have come to mean another file.
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return systemFault(errno);
    if (!S_ISREG(status.st_mode)) return notRegular();
    Descriptor file{uninterrupted(
        [&] { return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY); })};
    if (file.number() < 0) return systemFault(errno);
    if (::fstat(file.number(), &status) != 0) return systemFault(errno);
    if (!S_ISREG(status.st_mode)) return notRegular();
    return file;
}

FileContents readFile(const std::filesystem::path& path) {
    return openFile(path).andThen(readWaiting);
}

}  // namespace tessary::system
