#include "extension/widget_host.h"

#include "extension/renderer.h"

namespace tessary::extension {

using locale::UserLocale;

snapshot::Source sourceOf(const RequestOptions& options) {
    snapshot::Source source{.places = snapshot::Places::given(options.container, options.info)};
    if (options.at) source.clock = [now = *options.at] { return now; };
    return source;
}

UserLocale localeOf(const RequestOptions& options) {
    if (options.locale && options.timeZone) return {*options.locale, *options.timeZone};
    UserLocale locale = UserLocale::fromEnvironment();
    if (options.locale) locale.identifier = *options.locale;
    if (options.timeZone) locale.timeZone = *options.timeZone;
    return locale;
}

std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options) {
    Renderer renderer;
    return renderer.paint(renderer.layOut(entry, options), kind, entry.date, options);
}

}  // namespace tessary::extension
