// A label whose icon stands close before its title.
#pragma once

#include "platform/views/view.h"

namespace tessary::presentation {

/// Icon, 3 points, title, centred on each other; fonts and colours come from where it is used.
///
///     Label("Sign in to prod", "lock.fill").labelStyle(TightLabel{})
struct TightLabel {
    views::View body(const views::View& icon, const views::View& title) const {
        return HStack(views::Alignment::center, 3, {icon, title});
    }
};

}  // namespace tessary::presentation
