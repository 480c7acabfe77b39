// Display lists with charts as text, and where their elements lie.
#pragma once

#include <algorithm>
#include <array>

#include "pins/pin_display.h"
#include "presentation/palette.h"
#include "support/rendering.h"

namespace tessary::pins {

/// As `described`, circles and paths too: "\ncircle #F2716B\narea #F2716B\nline #F2716B\ndashes
/// #F2716B".
inline std::string listed(const views::DisplayList& list) {
    std::string text;
    for (const views::Element& element : list.elements) {
        if (const auto* circle = std::get_if<views::CircleElement>(&element.content)) {
            text += "\ncircle " + circle->color.hex() + (element.accent ? " accent" : "");
        } else if (const auto* path = std::get_if<views::PathElement>(&element.content)) {
            const auto* stroke = std::get_if<views::Stroke>(&path->paint);
            text += stroke == nullptr ? "\narea " : stroke->dash.empty() ? "\nline " : "\ndashes ";
            const auto* fill = std::get_if<views::Fill>(&path->paint);
            text += (fill != nullptr ? fill->gradient.at(0) : stroke->color).hex();
            text += element.accent ? " accent" : "";
        } else {
            text += described({.elements = {element}});
        }
    }
    return text;
}

/// The elements from `first` to before `last` lie between the sides, and all between the margins.
inline void expectWithin(const views::DisplayList& list, double left, double right,
                         std::size_t first = 0, std::size_t last = 99) {
    for (std::size_t i = first; i < std::min(last, list.elements.size()); ++i) {
        const views::Rect& frame = list.elements[i].frame;
        EXPECT_GE(frame.minX(), left) << listed(list);
        EXPECT_LE(frame.maxX(), right) << listed(list);
        EXPECT_GE(frame.minY(), 16) << listed(list);
        EXPECT_LE(frame.maxY(), 148) << listed(list);
    }
}

/// 16:00:40 on a day in 2024.
inline constexpr Date shownAt{1731772840};

/// A widget on its card.
template <class EntryView>
views::DisplayList hosted(const EntryView& view, bool medium, bool locked = false) {
    views::Environment environment;
    environment.widgetFamily =
        medium ? views::WidgetFamily::systemMedium : views::WidgetFamily::systemSmall;
    environment.redaction.placeholder = locked;
    return rendered(view, medium ? mediumCard : smallCard, environment);
}

/// A message with its heading, in both sizes, and what takes its place while locked.
template <class EntryView>
void expectMessage(const EntryView& view, const std::string& heading,
                   const std::array<std::string, 3>& texts, const std::optional<std::string>& url) {
    const auto message = [&](const std::array<std::string, 3>& parts) {
        return "\n\"" + heading + "\" 11 medium #A4AAB4\n<" + parts[0] + "> 20 medium #7C838E\n\"" +
               parts[1] + "\" 15 semibold #E6E8EB\n\"" + parts[2] + "\" 11 regular #7C838E limit 3";
    };
    for (const bool medium : {false, true}) {
        for (const bool locked : {false, true}) {
            const auto list = hosted(view, medium, locked);
            const std::array<std::string, 3> hidden{"lock.fill", "Hidden while locked",
                                                    "Unlock your Mac to see it."};
            if (locked || !texts[0].empty()) {
                EXPECT_EQ(listed(list), message(locked ? hidden : texts));
            }
            EXPECT_EQ(list.url, url);
            EXPECT_EQ(list.elements.at(0).frame.origin, (views::Point{16, 16}));
            EXPECT_EQ(list.background, presentation::Palette::background);
            EXPECT_EQ(list.colorScheme, views::ColorScheme::dark);
        }
    }
}

/// Calls with the state in each combination of problems, and the line of the one that counts.
template <class Pinned, class Check>
void withProblems(const Pinned& fresh, const Check& check) {
    for (int problems = 1; problems < 8; ++problems) {
        Pinned state = fresh;
        state.pin.authExpired = (problems & 1) != 0;
        if ((problems & 2) != 0) state.pin.error = "Throttled";
        state.stale = (problems & 4) != 0;
        std::string line = "\n\"Last updated 5 min. ago\"";
        if (state.pin.error)
            line = "\n<exclamationmark.triangle.fill> 11 medium #E5B25A\n\"Throttled\"";
        if (state.pin.authExpired)
            line =
                "\n<person.crop.circle.badge.exclamationmark> 11 medium #E5B25A"
                "\n\"Sign in to prod\"";
        check(state, line + " 11 medium #E5B25A limit 1");
    }
}

/// Calls with texts of one to 400 characters of several scripts.
template <class Check>
void withTextsOfAnyLength(const Check& check) {
    for (const std::string character : {"i", "W", "é", "漢", "ع", "e\u0301", "👩\u200D💻", "w "}) {
        std::string text;
        for (int length = 1; length <= 400; ++length) {
            text += character;
            if (length <= 20 || length % 200 == 0) check(text);
        }
    }
}

/// A text in one line that, where it is cut, is as small as it may become.
inline void expectShrunk(const views::TextElement& text, double least) {
    EXPECT_EQ(text.lines.size(), 1) << text.text;
    EXPECT_GE(text.shrink, least) << text.text;
    if (text.lines.at(0).find("…") != std::string::npos) {
        EXPECT_EQ(text.shrink, least) << text.text;
    }
}

}  // namespace tessary::pins
