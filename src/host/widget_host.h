// What a widget host decides: sizes, margins, the surroundings of a request, and how an entry
// becomes a picture.
#pragma once

#include <filesystem>
#include <string>

#include "host/command_line.h"
#include "platform/foundation/surroundings.h"
#include "platform/views/layout.h"
#include "platform/widgets/widget_configuration.h"

namespace tessary::host {

/// The card of a family, in points: 164 x 164 or 344 x 164, margins of 16, corners of 22.
views::Surface surface(widgets::WidgetFamily family, double scale);

/// What a request is to run in: its options, and the machine's own for those not given.
///
/// A container that is given stands in for the one of every application group, whatever the
/// information dictionary holds; a dictionary that is given has to name a group all the same.
foundation::Surroundings surroundingsFor(const RequestOptions& options);

/// An entry drawn as the options say. Throws std::runtime_error where that cannot be done.
std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options);

}  // namespace tessary::host
