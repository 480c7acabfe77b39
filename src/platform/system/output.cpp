#include "platform/system/output.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace tessary::system {

using foundation::Fault;
using foundation::Result;

namespace {

Fault cannotWrite(const std::string& target) {
    return {"cannot write " + target + ": " + std::strerror(errno)};
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

Result<void> writeStandardOutput(std::string_view bytes) {
    if (!writeAll(STDOUT_FILENO, bytes)) return cannotWrite("standard output");
    return {};
}

Result<void> writeFile(const std::filesystem::path& file, std::string_view bytes) {
    constexpr mode_t everybodyMayRead = 0666;  // less the user's mask
    const int descriptor =
        open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, everybodyMayRead);
    if (descriptor < 0) return cannotWrite(file.string());
    Result<void> written;
    if (!writeAll(descriptor, bytes)) written = cannotWrite(file.string());
    if (close(descriptor) != 0 && written) written = cannotWrite(file.string());
    return written;
}

}  // namespace tessary::system
