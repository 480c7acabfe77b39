// An inspection told to a person, to a program, and by an exit status.
#pragma once

#include <string>

#include "command/check.h"
#include "platform/foundation/json_writing.h"
#include "platform/locale/user_locale.h"

namespace tessary::command {

/// Paragraphs for a terminal, with times in the user's zone; nothing that a file holds reaches the
/// terminal as a control. Each fault opens with FILE:LINE:COLUMN, which editors can follow.
std::string asText(const Inspection& inspection, const locale::UserLocale& locale);

/// One object and a line feed.
std::string asJSON(const Inspection& inspection, foundation::JSONWriter::Style style);

/// What else is to be told by the exit status.
struct Strictness {
    bool notes{};  ///< and identifiers that are repeated
    bool stale{};  ///< that a widget calls its data old
};

/// 0 where all three files are usable, 1 where something keeps a widget from its data.
int exitStatus(const Inspection& inspection, const Strictness& strictness = {});

}  // namespace tessary::command
