// The sandbox that the extension runs in: what it does not need is given up before the first
// request is read, and cannot be had back.
//
//     const auto open = enterSandbox({.readable = {{"/usr/share/fonts"}}});
//     open                                  // {}: every door is shut
//     socket(AF_UNIX, SOCK_STREAM, 0)       // -1, EPERM
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tessary::sandbox {

struct SandboxRules {
    /// The files and folders, with all below them, that may still be opened, for reading alone.
    /// Those that don't exist are passed over. None: whatever the user may read, looking at any
    /// path, and leases.
    std::optional<std::vector<std::filesystem::path>> readable{};
};

/// Shuts, for this process, its threads and for good:
/// - new privileges (setuid programs and the like);
/// - by system call (seccomp): sockets of any kind, new processes, threads and programs, tracing
///   and signalling others, looking at paths, everything that creates, changes, renames or removes
///   a file, memory that can be executed; only what is listed in system_calls.cpp works, anything
///   else fails with EPERM;
/// - by path (Landlock): opening for reading what is not `readable`, and all writing.
///
/// Open descriptors stay usable, memory can be had. Call it before the first thread starts. Returns
/// what this kernel could not shut, a line for each of the three, as in "no Landlock: Function not
/// implemented"; the others are shut all the same.
std::vector<std::string> enterSandbox(const SandboxRules& rules);

}  // namespace tessary::sandbox
