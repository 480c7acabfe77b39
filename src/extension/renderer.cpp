#include "extension/renderer.h"

#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/json_painter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/drawing/text_painter.h"

namespace tessary::extension {

views::Surface surface(widgets::WidgetFamily family, double scale) {
    constexpr double height = 164;
    const bool medium = family == widgets::WidgetFamily::systemMedium;
    return {{medium ? 344 : height, height}, views::EdgeInsets::all(16), 22, scale};
}

views::DisplayList Renderer::layOut(const widgets::WidgetEntry& entry,
                                    const PictureOptions& options) {
    typesetter_.forgetIfMany();
    views::Environment environment;
    environment.widgetFamily = options.family;
    environment.redaction.placeholder = options.redacted;
    return views::layOut(entry.view(), surface(options.family, options.scale), environment,
                         typesetter_);
}

std::string Renderer::paint(const views::DisplayList& list, const std::string& kind,
                            foundation::Date date, const PictureOptions& options) {
    switch (options.format) {
        case PictureFormat::png: return drawing::encodePNG(drawing::paintPixels(list, typesetter_));
        case PictureFormat::svg: return drawing::paintSVG(list, typesetter_);
        case PictureFormat::pdf: return drawing::paintPDF(list, typesetter_, date);
        case PictureFormat::json: return drawing::paintJSON(list, {kind, options.family, date});
        case PictureFormat::text: return drawing::paintText(list) + "\n";
    }
    return {};
}

}  // namespace tessary::extension
