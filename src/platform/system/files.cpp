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
    /// Whether no writer has come to wait, who would be let in after a time.
    bool isUndisturbed() const { return ::fcntl(file_, F_GETLEASE) == F_RDLCK; }

private:
    int file_;
    int refusal_{};
};

constexpr int mostAttempts = 25;
constexpr long millisecond = 1'000'000;

void sleepFor(long nanoseconds) {
    const timespec time{0, nanoseconds};
    ::nanosleep(&time, nullptr);
}

/// What the file holds while a lease keeps it as it is; nothing where none was to be had.
std::optional<FileContents> readLeased(int file) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const ReadLease lease{file};
        if (lease.refusal() != 0 && lease.refusal() != EAGAIN) return std::nullopt;
        if (lease.refusal() == 0) {
            FileContents contents = readOnePass(file);
            if (lease.isUndisturbed()) return contents;
        }
        sleepFor(millisecond);
    }
    return std::nullopt;
}

/// The time of a file's last change, in nanoseconds; its size with it.
struct Revision {
    std::int64_t changed{};
    off_t size{};
    bool operator==(const Revision&) const = default;
};

std::int64_t nanoseconds(const timespec& time) {
    return time.tv_sec * 1'000'000'000 + time.tv_nsec;
}

Revision revision(int file) {
    struct stat status {};
    ::fstat(file, &status);
    return {nanoseconds(status.st_mtim), status.st_size};
}

/// A write gives a file its time before it changes the first byte, and may be held up after that.
bool isSettled(const Revision& revision) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t age = nanoseconds(now) - revision.changed;
    return age < 0 || age > 20 * millisecond;
}

FileContents readSettled(int file) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const Revision before = revision(file);
        if (isSettled(before)) {
            FileContents contents = readOnePass(file);
            if (revision(file) == before) return contents;
        }
        sleepFor(2 * millisecond);
    }
    return Fault{"being written to all the time"};
}

}  // namespace

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

FileContents readFile(const Descriptor& file) {
    if (auto contents = readLeased(file.number())) return *std::move(contents);
    return readSettled(file.number());
}

FileContents readFile(const std::filesystem::path& path) {
    return openFile(path).andThen([](const Descriptor& file) { return readFile(file); });
}

}  // namespace tessary::system
