// What every widget shows while its content must not be seen.
#pragma once

#include <string>

#include "platform/views/view.h"

namespace tessary::presentation {

/// Replaces the content by "Hidden while locked" where the host renders the widget redacted as a
/// placeholder; otherwise passes it through untouched.
///
///     content.modifier(LockedPlaceholder{"Alarms firing"})
struct LockedPlaceholder {
    std::string heading{};

    views::View body(const views::View& content) const;
    bool operator==(const LockedPlaceholder&) const = default;
};

}  // namespace tessary::presentation
