#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

#include "platform/sandbox/doors.h"
#include "platform/system/files.h"

namespace tessary::sandbox {

using system::Descriptor;

namespace {

constexpr std::uint64_t reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;

constexpr std::uint64_t firstWriting =
    LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
    LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR |
    LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
    LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;

// Newer than Debian 12's headers: the kernel's own numbers, and its own order of members.
constexpr std::uint64_t truncating = 1U << 14U;                 // from version 3 on
constexpr std::uint64_t deviceIO = 1U << 15U;                   // from version 5 on
constexpr std::uint64_t bindingAndConnecting = (1U << 2U) - 1;  // TCP, from version 4 on
constexpr std::uint64_t socketsAndSignals = (1U << 2U) - 1;     // outside, from version 6 on
struct Refused {
    std::uint64_t files{};
    std::uint64_t network{};
    std::uint64_t scopes{};
};

/// Everything that a kernel of this version of the interface can refuse, but for reading.
Refused everything(long version) {
    Refused refused{.files = firstWriting};
    if (version >= 2) refused.files |= LANDLOCK_ACCESS_FS_REFER;
    if (version >= 3) refused.files |= truncating;
    if (version >= 4) refused.network = bindingAndConnecting;
    if (version >= 5) refused.files |= deviceIO;
    if (version >= 6) refused.scopes = socketsAndSignals;
    return refused;
}

Refusal systemRefusal() { return std::system_category().message(errno); }

/// A rule for a file may only name what can be done to a file. What cannot be reached now could
/// not be read without a sandbox either.
Refusal allow(const Descriptor& rules, const std::filesystem::path& path) {
    const Descriptor place{::open(path.c_str(), O_PATH | O_CLOEXEC)};
    if (place.number() < 0) return std::nullopt;
    std::error_code ignored;
    const bool isFolder = std::filesystem::is_directory(path, ignored);
    const landlock_path_beneath_attr rule{
        .allowed_access = isFolder ? reading : LANDLOCK_ACCESS_FS_READ_FILE,
        .parent_fd = place.number()};
    if (::syscall(SYS_landlock_add_rule, rules.number(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0)
        return std::nullopt;
    return "no rule for " + path.native() + ": " + *systemRefusal();
}

}  // namespace

Refusal restrictPaths(const std::optional<std::vector<std::filesystem::path>>& readable) {
    const long version =
        ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) return systemRefusal();

    Refused refused = everything(version);
    if (readable) refused.files |= reading;
    const Descriptor rules{
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &refused, sizeof refused, 0))};
    if (rules.number() < 0) return systemRefusal();
    if (readable)
        for (const auto& path : *readable)
            if (auto refusal = allow(rules, path)) return refusal;
    if (::syscall(SYS_landlock_restrict_self, rules.number(), 0) != 0) return systemRefusal();
    return std::nullopt;
}

}  // namespace tessary::sandbox
