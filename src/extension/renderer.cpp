#include "extension/renderer.h"

#include <algorithm>

#include "platform/drawing/bounded_list.h"
#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/json_painter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/drawing/text_painter.h"

namespace tessary::extension {

namespace {

views::Size sizeOf(widgets::WidgetFamily family) {
    switch (family) {
        case widgets::WidgetFamily::systemSmall: return {164, 164};
        case widgets::WidgetFamily::systemMedium: return {344, 164};
    }
    return {};
}

}  // namespace

views::Surface surface(widgets::WidgetFamily family, double scale) {
    return {sizeOf(family), views::EdgeInsets::all(16), 22, scale};
}

views::DisplayList Renderer::layOut(const widgets::WidgetEntry& entry,
                                    const PictureOptions& options) {
    drawing::PangoTypesetter& type = typesetter(options.locale.identifier);
    type.forgetIfMany();
    views::Environment environment;
    environment.widgetFamily = options.family;
    environment.redaction.placeholder = options.redacted;
    environment.locale = options.locale;
    environment.now = entry.date;
    views::DisplayList list =
        views::layOut(entry.view(), surface(options.family, options.scale), environment, type);
    drawing::bound(list);
    return list;
}

std::string Renderer::paint(const views::DisplayList& list, const std::string& kind,
                            foundation::Date date, const PictureOptions& options) {
    drawing::PangoTypesetter& type = typesetter(options.locale.identifier);
    switch (options.format) {
        case PictureFormat::png: return drawing::encodePNG(drawing::paintPixels(list, type));
        case PictureFormat::svg: return drawing::paintSVG(list, type);
        case PictureFormat::pdf: return drawing::paintPDF(list, type, date);
        case PictureFormat::json: return drawing::paintJSON(list, {kind, options.family, date});
        case PictureFormat::text: return drawing::paintText(list) + "\n";
    }
    return {};
}

drawing::PangoTypesetter& Renderer::typesetter(const std::string& locale) {
    constexpr std::size_t most = 3;
    const auto known = std::ranges::find(types_, locale, &Type::locale);
    if (known != types_.end()) {
        types_.splice(types_.begin(), types_, known);
    } else {
        if (types_.size() == most) types_.pop_back();
        types_.emplace_front(locale);
    }
    return types_.front().typesetter;
}

}  // namespace tessary::extension
