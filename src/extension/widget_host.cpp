#include "extension/widget_host.h"

#include <iostream>

#include "extension/renderer.h"
#include "platform/foundation/json_decoding.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/files.h"

namespace tessary::extension {

/// A JSON object, whatever it holds.
struct AnyObject {
    std::optional<foundation::AnyJSON> anything{};
};

}  // namespace tessary::extension

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::extension::AnyObject> =
    std::tuple{Field{"", &tessary::extension::AnyObject::anything}};

namespace tessary::extension {

using foundation::Fault;
using foundation::Result;
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

Result<void> givenDictionary(const RequestOptions& options) {
    if (!options.info) return {};
    const auto refused = [&](const std::string& why) {
        return Fault{"--info: '" + options.info->string() + "' is not a JSON object: " + why};
    };
    const system::FileContents text = system::readFile(*options.info);
    if (!text) return refused(text.fault().message());
    const auto object = foundation::decodeJSON<AnyObject>(*text);
    return object ? Result<void>{} : refused(object.fault().message());
}

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
