// The kernel's means that the sandbox is made of. Each gives why it could not be put in force.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tessary::sandbox {

/// Why a means is not to be had, "Function not implemented"; none when it is in force.
using Refusal = std::optional<std::string>;

/// The system calls listed in system_calls.cpp go on working; all others fail with EPERM.
Refusal restrictSystemCalls();

/// Files are opened for reading alone, and only at or below `readable` where that is given.
Refusal restrictPaths(const std::optional<std::vector<std::filesystem::path>>& readable);

}  // namespace tessary::sandbox
