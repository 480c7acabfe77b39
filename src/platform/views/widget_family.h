// The sizes in which a widget may be placed.
#pragma once

#include "platform/foundation/named_cases.h"

namespace tessary::views {

enum class WidgetFamily { systemSmall, systemMedium };

}  // namespace tessary::views

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::WidgetFamily> =
    tessary::foundation::NamedCases<tessary::views::WidgetFamily, 4>{{
        {tessary::views::WidgetFamily::systemSmall, "systemSmall"},
        {tessary::views::WidgetFamily::systemMedium, "systemMedium"},
        {tessary::views::WidgetFamily::systemSmall, "small"},
        {tessary::views::WidgetFamily::systemMedium, "medium"},
    }};
