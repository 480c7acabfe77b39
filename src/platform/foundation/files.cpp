#include "platform/foundation/files.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tessary::foundation {
namespace {

/// Owns an open file descriptor.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    int number() const { return number_; }

private:
    int number_;
};

using Contents = std::variant<std::string, FileFault>;

FileFault systemFault(int error) { return {std::system_category().message(error)}; }

FileFault notRegular() { return {"not a regular file"}; }

FileFault tooLarge() {
    return {"larger than " + std::to_string(largestReadableFile >> 20U) + " MiB"};
}

int openForReading(const char* name) {
    int number = -1;
    do number = ::open(name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    while (number < 0 && errno == EINTR);
    return number;
}

/// Reads into `room` once; the byte count, 0 at the end, below 0 on failure.
ssize_t readOnce(int file, char* room, std::size_t size) {
    ssize_t count = 0;
    do count = ::read(file, room, size);
    while (count < 0 && errno == EINTR);
    return count;
}

/// `expected` is a guess at the size: the file may have become longer or shorter since. One byte
/// beyond it is asked for, so that a file which keeps its size needs no second buffer.
Contents readToEnd(int file, std::size_t expected) {
    std::string bytes(expected + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const auto count = readOnce(file, bytes.data() + length, bytes.size() - length);
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

}  // namespace

Contents readFile(const std::filesystem::path& path) {
    if (path.native().find('\0') != std::string::npos) return systemFault(EINVAL);

    // Looked at before it is opened, because opening some devices does something; and looked at
    // again, because the name may have come to mean another file.
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return systemFault(errno);
    if (!S_ISREG(status.st_mode)) return notRegular();
    const Descriptor file{openForReading(path.c_str())};
    if (file.number() < 0) return systemFault(errno);
    if (::fstat(file.number(), &status) != 0) return systemFault(errno);
    if (!S_ISREG(status.st_mode)) return notRegular();

    if (std::cmp_greater(status.st_size, largestReadableFile)) return tooLarge();
    return readToEnd(file.number(), static_cast<std::size_t>(status.st_size));
}

}  // namespace tessary::foundation
