// The widget of one pin: what it looks like around a kind's layout, and its declaration.
//
//     pinConfiguration<MetricPin>(source).displayName      // "CloudWatch metric"
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "pins/pin_kind.h"
#include "pins/pin_provider.h"
#include "pins/pin_query.h"
#include "platform/locale/localized.h"
#include "platform/views/view.h"
#include "platform/widgets/widget_configuration.h"
#include "presentation/locked_placeholder.h"
#include "presentation/message.h"
#include "presentation/palette.h"
#include "presentation/pin_problem.h"

namespace tessary::pins {

using views::View;

/// The content for a display state: the kind's layout where a pin is shown, else a message that
/// says why none is. Fills the widget, dark.
template <class Kind>
struct PinContent {
    PinDisplay<typename Kind::Snapshot> display;

    View body(const views::Environment& environment) const {
        return std::visit(Cases{Kind::words(), environment.widgetFamily}, display.value())
            .frame(views::FlexibleFrame::unbounded(views::Alignment::topLeading))
            .colorScheme(views::ColorScheme::dark);
    }
    bool operator==(const PinContent&) const = default;

private:
    struct Cases {
        PinWords words{};
        views::WidgetFamily family{};

        View operator()(const Pinned<typename Kind::Snapshot>& state) const {
            return Kind::layout(state, family);
        }
        View operator()(const NotPinned&) const { return notPinned(words.howToPin); }
        View operator()(const Choose&) const {
            return presentation::Message{words.heading, "hand.tap", words.chooseTitle,
                                         words.howToChoose};
        }
        View operator()(const Removed&) const { return notPinned(words.removed); }
        View notPinned(const std::string& detail) const {
            return presentation::Message{words.heading, "pin.slash",
                                         locale::localized("Not pinned"), detail};
        }
    };
};

/// The line that says why a muted pin is not current.
template <class Snapshot>
presentation::PinProblem pinProblem(const Pinned<Snapshot>& state) {
    return {state.pin.profile, state.pin.error, state.pin.authExpired, state.updated};
}

/// The time of day of a sample, in the locale's words and zone.
inline std::string timeOfDay(const snapshot::SnapshotPoint& point,
                             const locale::UserLocale& locale) {
    return locale.timeOfDay(Date::fromMilliseconds(point.t));
}

/// The widget: its content, guarded while locked, on the background, with its link.
template <class Kind>
View pinWidget(PinEntry<typename Kind::Snapshot> entry) {
    const auto* const shown = entry.display.pinned();
    std::optional<std::string> link = Kind::link(shown != nullptr ? &shown->pin : nullptr);
    const View widget = View{PinContent<Kind>{std::move(entry.display)}}
                            .modifier(presentation::LockedPlaceholder{Kind::words().heading})
                            .containerBackground(presentation::Palette::background);
    return link ? widget.widgetURL(*std::move(link)) : widget;
}

template <class Kind>
widgets::WidgetConfiguration pinConfiguration(const snapshot::Source& source) {
    const PinQuery<Kind> query{source};
    const PinWords words = Kind::words();
    return widgets::configuration(Kind::widget, PinProvider<Kind>{source}, pinWidget<Kind>)
        .configurationDisplayName(words.heading)
        .description(words.description)
        .supportedFamilies({views::WidgetFamily::systemSmall, views::WidgetFamily::systemMedium})
        .configuredBy({
            .title = words.title,
            .entityType = words.entityType,
            .entities = [query](const auto& ids) { return query.entities(ids); },
            .suggestedEntities = [query] { return query.suggestedEntities(); },
            .defaultResult = [query] { return query.defaultResult(); },
        });
}

}  // namespace tessary::pins
