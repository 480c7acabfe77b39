// What each command of the program does.
#pragma once

#include "command/command_line.h"

namespace tessary::command {

/// Runs a call: results to standard output, one line to standard error where it fails. Returns the
/// exit status: 0 done, 1 the output could not be made or written, 2 a wrong call.
int run(const foundation::Result<Call>& call);

}  // namespace tessary::command
