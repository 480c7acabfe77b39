#include "platform/system/output.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/system/files.h"

namespace tessary::system {

using foundation::Fault;
using foundation::Result;

namespace {

namespace fs = std::filesystem;

constexpr mode_t everybodyMayRead = 0666;  // less the user's mask

Fault cannotWrite(const std::string& target) {
    return {"cannot write " + target + ": " + std::strerror(errno)};
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            uninterrupted([&] { return write(descriptor, bytes.data(), bytes.size()); });
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

Result<void> writeStraight(const fs::path& file, std::string_view bytes) {
    Descriptor open{
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, everybodyMayRead)};
    const bool isWritten = open.number() >= 0 && writeAll(open.number(), bytes) && open.close();
    return isWritten ? Result<void>{} : cannotWrite(file.string());
}

/// A file beside another, under a name of its own; gone again unless it has been renamed.
class Beside {
public:
    explicit Beside(const fs::path& file)
        : path_(file.parent_path() /
                ("." + file.filename().string() + "." + std::to_string(::getpid()))),
          open_(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everybodyMayRead)) {}
    ~Beside() {
        if (isThere_) ::unlink(path_.c_str());
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    bool isOpen() const { return isThere_; }
    bool fill(std::string_view bytes, const struct stat* like) const {
        if (like != nullptr) ::fchmod(open_.number(), like->st_mode & 07777U);
        return writeAll(open_.number(), bytes);
    }
    bool flush() const { return ::fsync(open_.number()) == 0; }
    bool rename(const fs::path& file) {
        isThere_ = !open_.close() || ::rename(path_.c_str(), file.c_str()) != 0;
        return !isThere_;
    }

private:
    fs::path path_;
    Descriptor open_;
    bool isThere_{open_.number() >= 0};
};

/// Whether it is the folder, or the length of a name in it, that lets nothing new be made.
bool onlyInPlace(int error) {
    return error == EACCES || error == EPERM || error == ENAMETOOLONG || error == EEXIST;
}

Result<void> replace(const fs::path& file, std::string_view bytes, bool outlasts) {
    struct stat old {};
    std::error_code ignored;
    const bool isThere = ::stat(file.c_str(), &old) == 0;
    const bool isReplaceable = isThere ? S_ISREG(old.st_mode) && old.st_uid == ::geteuid()
                                       : !fs::is_symlink(file, ignored);
    if (!isReplaceable) return writeStraight(file, bytes);
    const fs::path place = isThere ? fs::canonical(file, ignored) : file;
    Beside beside{place};
    if (!beside.isOpen() && onlyInPlace(errno)) return writeStraight(file, bytes);
    if (!beside.isOpen()) return cannotWrite(file.string());
    const bool isWritten = beside.fill(bytes, isThere ? &old : nullptr) &&
                           (!outlasts || beside.flush()) && beside.rename(place);
    return isWritten ? Result<void>{} : cannotWrite(file.string());
}

}  // namespace

Result<void> writeStandardOutput(std::string_view bytes) {
    if (!writeAll(STDOUT_FILENO, bytes)) return cannotWrite("standard output");
    return {};
}

Result<void> writeFile(const fs::path& file, std::string_view bytes) {
    return replace(file, bytes, false);
}

Result<void> saveFile(const fs::path& file, std::string_view bytes) {
    std::error_code fault;
    const fs::path folder = file.parent_path();
    const bool isNew = fs::create_directories(folder, fault);
    if (isNew) fs::permissions(folder, fs::perms::owner_all, fault);
    if (fault) return Fault{"cannot make " + folder.string() + ": " + fault.message()};
    return replace(file, bytes, true);
}

}  // namespace tessary::system
