#include "platform/views/environment.h"

namespace tessary::views {

namespace {

template <class Value>
void set(Value& target, const auto& change) {
    if (change) target = *change;
}

}  // namespace

Environment EnvironmentChange::applied(Environment to) const {
    set(to.font, font);
    set(to.weight, weight);
    set(to.monospacedDigits, monospacedDigits);
    set(to.foreground, foreground);
    set(to.lineLimit, lineLimit);
    set(to.truncation, truncation);
    set(to.minimumScale, minimumScale);
    set(to.labelStyle, labelStyle);
    set(to.colorScheme, colorScheme);
    set(to.redaction, redaction);
    set(to.accent, accent);
    if (opacity) to.opacity *= *opacity;
    return to;
}

}  // namespace tessary::views
