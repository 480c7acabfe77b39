#include "extension/widget_host.h"

#include <iostream>

#include "extension/renderer.h"
#include "platform/foundation/visible_text.h"

namespace tessary::extension {

using locale::UserLocale;

namespace {

/// Once, on standard error.
void tellOfUnknownZone() {
    static const auto zone = UserLocale::unknownTimeZone();
    static const bool isTold =
        zone && (std::cerr << "tessary-widgets: TZ: '" << foundation::visible(*zone)
                           << "' is no time zone, times are in UTC\n");
    static_cast<void>(isTold);
}

}  // namespace

snapshot::Source sourceOf(const RequestOptions& options) {
    snapshot::Source source{.places = snapshot::Places::given(options.container, options.info)};
    if (options.at) source.clock = [now = *options.at] { return now; };
    return source;
}

UserLocale localeOf(const RequestOptions& options) {
    if (options.locale && options.timeZone) return {*options.locale, *options.timeZone};
    UserLocale locale = UserLocale::fromEnvironment();
    if (options.locale) locale = {*options.locale, locale.timeZone};
    if (options.timeZone)
        locale.timeZone = *options.timeZone;
    else
        tellOfUnknownZone();
    return locale;
}

std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options) {
    Renderer renderer;
    return renderer.paint(renderer.layOut(entry, options), kind, entry.date, options);
}

}  // namespace tessary::extension
