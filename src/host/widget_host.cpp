#include "host/widget_host.h"

#include <system_error>

#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/json_painter.h"
#include "platform/drawing/pango_typesetter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/drawing/text_painter.h"
#include "platform/foundation/information_dictionary.h"

namespace tessary::host {

namespace fs = std::filesystem;
using foundation::InformationDictionary;
using foundation::Surroundings;
using foundation::UserLocale;

namespace {

/// The dictionary that came with the program: beside it where it was built, in the shared data
/// where it was installed.
InformationDictionary installedDictionary() {
    std::error_code ignored;
    const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const fs::path beside = folder / "Info.plist";
    if (fs::exists(beside, ignored)) return InformationDictionary{beside};
    return InformationDictionary{folder.parent_path() / "share/tessary-widgets/Info.plist"};
}

/// The group that a container given by hand belongs to.
std::optional<std::string> anyGroup(std::string_view) { return "com.tessary.desktop"; }

UserLocale localeFor(const RequestOptions& options) {
    if (options.locale && options.timeZone) return {*options.locale, *options.timeZone};
    UserLocale locale = UserLocale::fromEnvironment();
    if (options.locale) locale.identifier = *options.locale;
    if (options.timeZone) locale.timeZone = *options.timeZone;
    return locale;
}

}  // namespace

views::Surface surface(widgets::WidgetFamily family, double scale) {
    constexpr double height = 164;
    const bool medium = family == widgets::WidgetFamily::systemMedium;
    return {{medium ? 344 : height, height}, views::EdgeInsets::all(16), 22, scale};
}

Surroundings surroundingsFor(const RequestOptions& options) {
    Surroundings result;
    if (options.at) result.clock = [now = *options.at] { return now; };
    if (options.container) result.container = [root = *options.container](auto) { return root; };
    if (options.container && !options.info) {
        result.information = anyGroup;
    } else {
        result.information = [given = options.info](std::string_view key) {
            return (given ? InformationDictionary{*given} : installedDictionary()).text(key);
        };
    }
    result.locale = localeFor(options);
    return result;
}

std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options) {
    views::Environment environment;
    environment.widgetFamily = options.family;
    environment.redaction.placeholder = options.redacted;
    drawing::PangoTypesetter typesetter{foundation::surroundings().locale.identifier};
    const views::DisplayList list =
        views::layOut(entry.view, surface(options.family, options.scale), environment, typesetter);

    switch (options.format) {
        case PictureFormat::png: return drawing::encodePNG(drawing::paintPixels(list, typesetter));
        case PictureFormat::svg: return drawing::paintSVG(list, typesetter);
        case PictureFormat::pdf: return drawing::paintPDF(list, typesetter, entry.date);
        case PictureFormat::json:
            return drawing::paintJSON(list, {kind, options.family, entry.date});
        case PictureFormat::text: return drawing::paintText(list) + "\n";
    }
    return {};
}

}  // namespace tessary::host
