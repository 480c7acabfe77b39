// The extension as a process of its own: it answers requests on standard input and output until
// the input ends, in a sandbox (platform/sandbox/sandbox.h).
#pragma once

#include <optional>
#include <string>

#include "extension/request_options.h"

namespace tessary::extension {

struct ServeOptions {
    RequestOptions request{};  ///< the surroundings of all requests
    bool requireSandbox{};     ///< refuse to go on where the kernel lacks a part of it
};

/// Serves until the input ends. What went wrong, if anything; a broker that was killed is thrown as
/// std::runtime_error. What the kernel cannot shut of the
/// sandbox is told once on standard error; with `requireSandbox` it is what went wrong, before a
/// request is read.
std::optional<std::string> serve(const ServeOptions& options);

}  // namespace tessary::extension
