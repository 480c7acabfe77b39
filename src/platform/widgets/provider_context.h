// What a host tells a provider about the place that it asks for.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/named_cases.h"
#include "platform/views/widget_family.h"

namespace tessary::widgets {

using views::WidgetFamily;

struct ProviderContext {
    WidgetFamily family{WidgetFamily::systemSmall};
    bool isPreview{};  ///< for the gallery, where sample content beats none
    /// Identifies the entity that the user has configured the widget with.
    std::optional<std::string> choice{};
    bool operator==(const ProviderContext&) const = default;
};

/// The three things that a host asks a provider for.
enum class Request { placeholder, snapshot, timeline };

}  // namespace tessary::widgets

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::widgets::Request> =
    tessary::foundation::NamedCases<tessary::widgets::Request, 3>{{
        {tessary::widgets::Request::placeholder, "placeholder"},
        {tessary::widgets::Request::snapshot, "snapshot"},
        {tessary::widgets::Request::timeline, "timeline"},
    }};
