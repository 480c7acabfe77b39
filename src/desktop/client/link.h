// Which of the links that the extension names a click may open.
//
//     isWidgetLink("tessary://alarms")          // true, as for "TESSARY:x"
//     isWidgetLink("file:///etc/passwd")        // false
#pragma once

#include <string_view>

namespace tessary::client {

/// Whether a text is a link into the host application: of its scheme, in any case of the letters,
/// and without blanks or controls, which no link holds.
bool isWidgetLink(std::string_view text);

}  // namespace tessary::client
