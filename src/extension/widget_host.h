// What a widget host decides: the surroundings of a request, and how an entry becomes a picture.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "extension/picture_options.h"
#include "extension/request_options.h"
#include "platform/system/surroundings.h"
#include "platform/widgets/widget_configuration.h"

namespace tessary::extension {

/// Where the information dictionary is looked for, the first that is there counting: what was
/// given; else beside the program, where it was built, and in the shared data, where it was
/// installed.
std::vector<std::filesystem::path> dictionaryPlaces(const RequestOptions& options);

/// What a request is to run in: its options, and the machine's own for those not given.
///
/// A container that is given stands in for the one of every application group, whatever the
/// information dictionary holds; a dictionary that is given has to name a group all the same.
system::Surroundings surroundingsFor(const RequestOptions& options);

/// An entry drawn as the options say. Throws std::runtime_error where that cannot be done.
std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options);

}  // namespace tessary::extension
