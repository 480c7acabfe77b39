// The extension as a process of its own: it answers requests on standard input and output until
// the input ends, in a sandbox (platform/sandbox/sandbox.h).
#pragma once

#include "extension/request_options.h"
#include "platform/foundation/result.h"

namespace tessary::extension {

struct ServeOptions {
    RequestOptions request{};  ///< where all requests look, and what holds where they say nothing
    bool requireSandbox{};     ///< refuse to go on where the kernel lacks a part of it
};

/// Serves until the input ends. A broker that was killed or stopped is thrown as
/// std::runtime_error. What the kernel cannot shut of the sandbox is told once on standard error;
/// with `requireSandbox` it is a fault, before a request is read.
foundation::Result<void> serve(const ServeOptions& options);

}  // namespace tessary::extension
