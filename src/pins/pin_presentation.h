// What the views of both pin widgets say and do alike.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "pins/pin_display.h"
#include "platform/locale/localized.h"
#include "platform/views/view.h"
#include "presentation/locked_placeholder.h"
#include "presentation/palette.h"
#include "presentation/pin_message.h"
#include "presentation/pin_problem.h"

namespace tessary::pins {

using views::View;

/// The texts of a pin widget that has nothing to show.
struct PinTexts {
    std::string heading{};  ///< the widget's name line
    std::string howToPin{};
    std::string chooseTitle{};
    std::string howToChoose{};
    std::string removed{};
};

/// A message for each case in which no pin is shown; `layout(pinned)` where one is. Fills the
/// widget, dark.
template <class Snapshot, class Layout>
View pinContent(const PinDisplay<Snapshot>& display, const PinTexts& texts, const Layout& layout) {
    using presentation::PinMessage;
    const std::string notPinned = locale::localized("Not pinned");
    struct Content {
        const PinTexts& texts;
        const std::string& notPinnedTitle;
        const Layout& layout;

        View operator()(const Pinned<Snapshot>& state) const { return layout(state); }
        View operator()(const NotPinned&) const {
            return PinMessage{texts.heading, "pin.slash", notPinnedTitle, texts.howToPin};
        }
        View operator()(const Choose&) const {
            return PinMessage{texts.heading, "hand.tap", texts.chooseTitle, texts.howToChoose};
        }
        View operator()(const Removed&) const {
            return PinMessage{texts.heading, "pin.slash", notPinnedTitle, texts.removed};
        }
    };
    return std::visit(Content{texts, notPinned, layout}, display.value())
        .frame(views::FlexibleFrame::unbounded(views::Alignment::topLeading))
        .colorScheme(views::ColorScheme::dark);
}

/// The line that says why a muted pin is not current.
template <class Snapshot>
View pinProblem(const Pinned<Snapshot>& state, Date now) {
    return presentation::PinProblem{state.pin.profile, state.pin.error, state.pin.authExpired,
                                    state.stale,       state.updated,   now};
}

/// The widget around an entry's content: `Content` is a view record of a display, a now and a
/// medium flag, made once the family is known.
template <class Content, class Entry>
View pinWidget(const Entry& entry, const std::string& heading, std::optional<std::string> link) {
    const View content = views::EnvironmentReader(
        entry, [](const Entry& shown, const views::Environment& environment) {
            const bool medium = environment.widgetFamily == views::WidgetFamily::systemMedium;
            return View{Content{shown.display, shown.date, medium}};
        });
    const View widget = content.modifier(presentation::LockedPlaceholder{heading})
                            .containerBackground(presentation::Palette::background);
    return link ? widget.widgetURL(std::move(*link)) : widget;
}

/// The time of day of a sample, in the user's locale and zone.
std::string timeOfDay(const snapshot::SnapshotPoint& point);

}  // namespace tessary::pins
