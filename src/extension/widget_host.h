// What a widget host decides: where a request looks and in whose words it is answered, and how an
// entry becomes a picture.
#pragma once

#include <string>

#include "extension/picture_options.h"
#include "extension/request_options.h"
#include "platform/foundation/result.h"
#include "platform/locale/user_locale.h"
#include "platform/widgets/widget_configuration.h"
#include "snapshot/source.h"

namespace tessary::extension {

/// Whether the information dictionary that the options name is one, a file that holds a JSON
/// object; they may name none. What the object holds is judged by whoever looks for the group in
/// it.
foundation::Result<void> givenDictionary(const RequestOptions& options);

/// Where a request looks: as its options say, and the machine's own for those not given.
snapshot::Source sourceOf(const RequestOptions& options);

/// The user's locale: as the options say, and the environment's for what they do not.
locale::UserLocale localeOf(const RequestOptions& options);

/// An entry drawn as the options say. Throws std::runtime_error where that cannot be done.
std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options);

}  // namespace tessary::extension
