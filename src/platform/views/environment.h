// What a view inherits from the views around it.
#pragma once

#include <optional>
#include <variant>

#include "platform/foundation/date.h"
#include "platform/locale/user_locale.h"
#include "platform/views/color.h"
#include "platform/views/font.h"
#include "platform/views/widget_family.h"

namespace tessary::views {

class View;

enum class Truncation { tail, middle };
enum class ColorScheme { light, dark };

/// Why the host asks for content that shows nothing of its data.
struct RedactionReasons {
    bool placeholder{};  ///< rendered as a placeholder, as on a locked screen
    bool privacy{};      ///< private parts hidden
    bool operator==(const RedactionReasons&) const = default;
};

/// How a label arranges its icon and its title.
struct LabelStyle {
    View (*body)(const View& icon, const View& title){};
    bool operator==(const LabelStyle&) const = default;
};

/// Everything a subtree inherits. Values travel down; a modifier changes them for what it wraps.
struct Environment {
    Font font{};
    std::optional<Weight> weight{};  ///< overrides the font's own
    bool monospacedDigits{};         ///< added to the font's own
    Color foreground{};
    std::optional<int> lineLimit{};  ///< most lines of a text; none: as many as it needs
    Truncation truncation{Truncation::tail};
    double minimumScale{1};  ///< smallest factor that a text may shrink to, above 0 to 1
    double opacity{1};       ///< product of all opacities around
    LabelStyle labelStyle{};
    ColorScheme colorScheme{ColorScheme::light};
    RedactionReasons redaction{};
    bool accent{};  ///< inside the widget's accent group
    WidgetFamily widgetFamily{WidgetFamily::systemSmall};
    locale::UserLocale locale{};
    foundation::Date now{};  ///< the moment that is shown: the date of the widget's entry

    Font resolvedFont() const {
        return {font.size, weight.value_or(font.weight), font.design,
                font.monospacedDigits || monospacedDigits};
    }
    bool operator==(const Environment&) const = default;
};

/// A new value for one of the things inherited; of the opacity a factor.
template <class Value>
struct Setting {
    Value Environment::*member{};
    Value value{};

    void apply(Environment& to) const { to.*member = value; }
    bool operator==(const Setting&) const = default;
};
template <>
inline void Setting<double>::apply(Environment& to) const {
    to.*member = member == &Environment::opacity ? to.opacity * value : value;
}

using EnvironmentChange =
    std::variant<Setting<Font>, Setting<std::optional<Weight>>, Setting<bool>, Setting<Color>,
                 Setting<std::optional<int>>, Setting<Truncation>, Setting<double>,
                 Setting<LabelStyle>, Setting<ColorScheme>, Setting<RedactionReasons>>;

}  // namespace tessary::views

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::Truncation> =
    tessary::foundation::NamedCases<tessary::views::Truncation, 2>{{
        {tessary::views::Truncation::tail, "tail"},
        {tessary::views::Truncation::middle, "middle"},
    }};

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::ColorScheme> =
    tessary::foundation::NamedCases<tessary::views::ColorScheme, 2>{{
        {tessary::views::ColorScheme::light, "light"},
        {tessary::views::ColorScheme::dark, "dark"},
    }};
