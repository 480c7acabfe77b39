// The kernel's means that the sandbox is made of. Each gives why it could not be put in force.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tessary::sandbox {

/// Why a means is not to be had, "Function not implemented"; none when it is in force.
using Refusal = std::optional<std::string>;

/// Who may look at any path, and ask that nobody writes to a file meanwhile.
enum class Reader { ofNoOther, ofAnyFile };

/// The system calls listed in system_calls.cpp go on working, in the ways listed there; all others
/// fail with EPERM.
Refusal restrictSystemCalls(Reader reader);

/// That list, for docs/protocol.md: a line for each use, the calls with what is left of them.
std::string allowedCallsAsText();

/// Files are opened for reading alone, and only at or below `readable` where that is given; nothing
/// outside is signalled or connected to, where the kernel can refuse that. What of `readable` does
/// not exist is passed over. In force as a whole or not at all.
Refusal restrictPaths(const std::optional<std::vector<std::filesystem::path>>& readable);

}  // namespace tessary::sandbox
