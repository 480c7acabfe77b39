#include "alarms/alarms_widget_view.h"

#include "platform/locale/localized.h"
#include "platform/system/surroundings.h"
#include "presentation/locked_placeholder.h"
#include "presentation/palette.h"
#include "presentation/relative.h"

namespace tessary::alarms {

using namespace views;
using locale::localized;
using presentation::LockedPlaceholder;
using presentation::Palette;
using presentation::relative;

namespace {

constexpr std::size_t listedAlarms = 3;

View title() {
    return Text(localized("Alarms firing"))
        .font(Font::system(11, Weight::medium))
        .foreground(Palette::secondary);
}

}  // namespace

View AlarmsWidgetEntryView::body() const {
    const View content =
        EnvironmentReader(entry, [](const AlarmsEntry& shown, const Environment& environment) {
            const bool medium = environment.widgetFamily == WidgetFamily::systemMedium;
            return View{AlarmsWidgetView{shown.display, shown.date, medium}};
        });
    return content.modifier(LockedPlaceholder{localized("Alarms firing")})
        .containerBackground(Palette::background)
        .widgetURL("tessary://alarms");
}

View AlarmsWidgetView::body() const {
    struct Content {
        Date now{};
        bool medium{};

        View operator()(const AlarmsDisplay::Unavailable&) const {
            return Message{"bell.slash", localized("Not watching"),
                           localized("Open Tessary and turn on alarm notifications.")};
        }
        View operator()(const AlarmsDisplay::NotWatching&) const {
            return Message{"bell.slash", localized("Not watching"),
                           localized("Alarm notifications are off in Tessary.")};
        }
        View operator()(const AlarmsDisplay::Watching& state) const {
            if (!medium) return Summary{state, now};
            return HStack(Alignment::top, 14,
                          {
                              View{Summary{state, now}}.frame(
                                  FixedFrame{.width = 118, .alignment = Alignment::leading}),
                              Rectangle(Palette::divider).frame(FixedFrame{.width = 1}),
                              AlarmList{state},
                          });
        }
    };
    return std::visit(Content{now, medium}, display.value())
        .frame(FlexibleFrame::unbounded(Alignment::topLeading))
        .colorScheme(ColorScheme::dark);
}

View Summary::body() const {
    return VStack(Alignment::leading, 0,
                  {
                      title(),
                      Spacer(4),
                      HStack(Alignment::center, 6,
                             {
                                 when(state.firing == 0, [&] { return checkmark(); }),
                                 count(),
                             }),
                      Spacer(4),
                      Footer{state, now},
                  });
}

View Summary::checkmark() const {
    return Image("checkmark.circle.fill")
        .font(Font::system(26, Weight::semibold))
        .foreground(state.stale ? Palette::tertiary : Palette::success)
        .accentable();
}

View Summary::count() const {
    const Color current = state.firing >= 1 ? Palette::danger : Palette::primary;
    return Text(system::surroundings().locale.integer(state.firing))
        .font(Font::system(44, Weight::semibold, FontDesign::rounded))
        .monospacedDigits()
        .foreground(state.stale ? Palette::tertiary : current)
        .accentable()
        .minimumScale(0.5)
        .lineLimit(1);
}

View Footer::body() const {
    return VStack(Alignment::leading, 2,
                  {
                      when(state.paused >= 1,
                           [&] {
                               return Label(localized("Paused · sign in"), "pause.circle.fill")
                                   .foreground(Palette::warning)
                                   .weight(Weight::semibold);
                           }),
                      freshness(),
                  })
        .font(Font::system(11))
        .lineLimit(1)
        .labelStyle(CompactLabel{});
}

View Footer::freshness() const {
    const std::string age = relative(state.updated, now);
    if (state.stale) {
        return Group({
            Text(localized("Last updated")).foreground(Palette::warning),
            Text(age).foreground(Palette::tertiary),
        });
    }
    return Text(std::to_string(state.watched) + localized(" watched · ") + age)
        .foreground(Palette::tertiary);
}

View AlarmList::body() const {
    return VStack(Alignment::leading, 7, {state.alarms.empty() ? unlisted() : rows()})
        .frame(FlexibleFrame::unboundedWidth(Alignment::leading));
}

/// In the middle of the height: counted but not listed, or nothing at all.
View AlarmList::unlisted() const {
    const std::string text = state.firing != 0 ? std::to_string(state.firing) + localized(" firing")
                                               : localized("No watched alarms are in ALARM.");
    return Group({
        Spacer(0),
        Text(text).font(Font::system(12)).foreground(Palette::secondary),
        Spacer(0),
    });
}

View AlarmList::rows() const {
    std::vector<View> lines;
    for (std::size_t i = 0; i < state.alarms.size() && i < listedAlarms; ++i)
        lines.push_back(row(state.alarms[i]));
    const auto listed = static_cast<std::int64_t>(listedAlarms);
    lines.push_back(when(state.firing > listed, [&] {
        return Text("+" + std::to_string(state.firing - listed) + localized(" more"))
            .font(Font::system(11))
            .foreground(Palette::tertiary);
    }));
    return Group(std::move(lines));
}

View AlarmList::row(const Alarm& alarm) const {
    return VStack(Alignment::leading, 1,
                  {
                      Text(alarm.name)
                          .font(Font::system(12, Weight::semibold))
                          .foreground(state.stale ? Palette::secondary : Palette::primary),
                      Text(alarm.profile + " · " + alarm.region)
                          .font(Font::system(11))
                          .foreground(Palette::tertiary),
                  })
        .lineLimit(1)
        .truncation(Truncation::middle);
}

View Message::body() const {
    return VStack(
        Alignment::leading, 6,
        {
            alarms::title(),
            Spacer(0),
            Image(symbol).font(Font::system(22, Weight::medium)).foreground(Palette::tertiary),
            Text(title).font(Font::system(15, Weight::semibold)).foreground(Palette::primary),
            Text(detail)
                .font(Font::system(11))
                .foreground(Palette::tertiary)
                .lineLimit(3)
                .fixedSize(false, true),
        });
}

View CompactLabel::body(const View& icon, const View& label) const {
    return HStack(Alignment::center, 3, {icon, label});
}

}  // namespace tessary::alarms
