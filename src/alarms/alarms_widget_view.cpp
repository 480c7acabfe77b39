#include "alarms/alarms_widget_view.h"

#include <algorithm>
#include <utility>

#include "platform/locale/localized.h"
#include "presentation/locked_placeholder.h"
#include "presentation/message.h"
#include "presentation/palette.h"
#include "presentation/relative.h"
#include "presentation/spacing.h"
#include "presentation/tight_label.h"

namespace tessary::alarms {

using namespace views;
using locale::embedded;
using locale::localized;
using presentation::Palette;
using presentation::Spacing;

namespace {

constexpr std::size_t listedAlarms = 3;

std::string title() { return localized("Alarms firing"); }

View message(const std::string& detail) {
    return presentation::Message{title(), "bell.slash", localized("Not watching"), detail, 22};
}

AlarmList firstOf(const AlarmsDisplay::Watching& state) {
    AlarmList list{state.firing};
    const std::size_t shown = std::min(state.alarms.size(), listedAlarms);
    for (std::size_t i = 0; i < shown; ++i) {
        const Alarm& alarm = state.alarms[i];
        list.rows.push_back({alarm.name, alarm.profile + " · " + alarm.region, state.stale});
    }
    return list;
}

/// What each case looks like.
struct Content {
    WidgetFamily family{};

    View operator()(const AlarmsDisplay::Unavailable&) const {
        return message(localized("Open Tessary and turn on alarm notifications."));
    }
    View operator()(const AlarmsDisplay::NotWatching&) const {
        return message(localized("Alarm notifications are off in Tessary."));
    }
    View operator()(const AlarmsDisplay::Watching& state) const {
        View summary =
            Summary{state.firing, {state.watched, state.paused, state.updated, state.stale}};
        if (family == WidgetFamily::systemSmall) return summary;
        return HStack(Alignment::top, Spacing::columns,
                      {
                          summary.frame(FixedFrame{.width = 118, .alignment = Alignment::leading}),
                          Rectangle(Palette::divider).frame(FixedFrame{.width = 1}),
                          firstOf(state),
                      });
    }
};

}  // namespace

widgets::WidgetConfiguration alarmsConfiguration(const snapshot::Source& source) {
    return widgets::configuration("com.tessary.desktop.widgets.alarms", AlarmsProvider{source},
                                  alarmsWidget)
        .configurationDisplayName(title())
        .description(localized("CloudWatch alarms in ALARM across the profiles Tessary watches."))
        .supportedFamilies({WidgetFamily::systemSmall, WidgetFamily::systemMedium});
}

View alarmsWidget(AlarmsEntry entry) {
    return View{AlarmsWidgetView{std::move(entry.display)}}
        .modifier(presentation::LockedPlaceholder{title()})
        .containerBackground(Palette::background)
        .widgetURL("tessary://alarms");
}

View AlarmsWidgetView::body(const Environment& environment) const {
    return std::visit(Content{environment.widgetFamily}, display.value())
        .frame(FlexibleFrame::unbounded(Alignment::topLeading))
        .colorScheme(ColorScheme::dark);
}

View Summary::body(const Environment& environment) const {
    return VStack(Alignment::leading, 0,
                  {
                      presentation::heading(title()),
                      Spacer(Spacing::number),
                      HStack(Alignment::center, 6,
                             {
                                 when(firing == 0, [&] { return checkmark(); }),
                                 count(environment.locale),
                             }),
                      Spacer(Spacing::number),
                      footer,
                  });
}

View Summary::checkmark() const {
    return Image("checkmark.circle.fill")
        .font(Font::system(26, Weight::semibold))
        .foreground(footer.stale ? Palette::tertiary : Palette::success)
        .accentable();
}

View Summary::count(const locale::UserLocale& locale) const {
    const Color current = firing >= 1 ? Palette::danger : Palette::primary;
    return Text(locale.integer(firing))
        .font(Font::system(44, Weight::semibold, FontDesign::rounded))
        .monospacedDigits()
        .foreground(footer.stale ? Palette::tertiary : current)
        .accentable()
        .minimumScale(0.5)
        .lineLimit(1);
}

View Footer::body(const Environment& environment) const {
    return VStack(Alignment::leading, 2,
                  {
                      when(paused >= 1,
                           [&] {
                               return Label(localized("Paused · sign in"), "pause.circle.fill")
                                   .foreground(Palette::warning)
                                   .weight(Weight::semibold);
                           }),
                      freshness(environment),
                  })
        .font(Font::system(11))
        .lineLimit(1)
        .labelStyle(presentation::TightLabel{});
}

View Footer::freshness(const Environment& environment) const {
    const std::string age = presentation::relative(updated, environment.now, environment.locale);
    if (stale) {
        return Group({
            Text(localized("Last updated")).foreground(Palette::warning),
            Text(age).foreground(Palette::tertiary),
        });
    }
    return Text(std::to_string(watched) + localized(" watched · ") + embedded(age), {age})
        .foreground(Palette::tertiary);
}

View AlarmList::body() const {
    return VStack(Alignment::leading, 7, {rows.empty() ? unlisted() : listed()})
        .frame(FlexibleFrame::unboundedWidth(Alignment::leading));
}

/// In the middle of the height: counted but not listed, or nothing at all.
View AlarmList::unlisted() const {
    const std::string text = firing != 0 ? std::to_string(firing) + localized(" firing")
                                         : localized("No watched alarms are in ALARM.");
    return Group({
        Spacer(0),
        Text(text).font(Font::system(12)).foreground(Palette::secondary),
        Spacer(0),
    });
}

View AlarmList::listed() const {
    std::vector<View> lines{rows.begin(), rows.end()};
    const auto most = static_cast<std::int64_t>(listedAlarms);
    lines.push_back(when(firing > most, [&] {
        return Text("+" + std::to_string(firing - most) + localized(" more"))
            .font(Font::system(11))
            .foreground(Palette::tertiary);
    }));
    return Group(std::move(lines));
}

View AlarmRow::body() const {
    return VStack(Alignment::leading, 1,
                  {
                      Text(name)
                          .font(Font::system(12, Weight::semibold))
                          .foreground(stale ? Palette::secondary : Palette::primary),
                      Text(place).font(Font::system(11)).foreground(Palette::tertiary),
                  })
        .lineLimit(1)
        .truncation(Truncation::middle);
}

}  // namespace tessary::alarms
