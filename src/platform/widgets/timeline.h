// What a provider answers with: dated entries and when to ask again.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/foundation/date.h"

namespace tessary::widgets {

using foundation::Date;

/// Ask for a new timeline once the date has come, not before.
struct ReloadPolicy {
    Date after{};
    bool operator==(const ReloadPolicy&) const = default;
};

/// Entries in ascending order of their dates; the one shown is the latest whose date has come.
///
/// A provider reads once, and each entry is derived from that when it is asked for, always the
/// same: most of a timeline is never drawn, and what was read may be long.
template <class Entry>
struct Timeline {
    std::vector<Date> dates{};
    std::function<Entry(Date)> entry{};  ///< the one of a date of these
    std::optional<ReloadPolicy> policy{};
};

/// A single entry, without a policy: a placeholder or a snapshot.
template <class Entry>
Timeline<Entry> single(Entry entry) {
    const Date date = entry.date;
    return {{date}, [entry = std::move(entry)](Date) { return entry; }, {}};
}

/// The timeline that every widget of the system answers with: five entries, at `start` and each
/// minute after it, made by `entryAt(date)`; to be asked again a minute after the last.
template <class EntryAt>
auto minuteTimeline(Date start, EntryAt entryAt) {
    constexpr int entries = 5;
    constexpr double spacing = 60;       // seconds
    constexpr double reloadDelay = 300;  // seconds
    Timeline<decltype(entryAt(start))> timeline{
        {}, std::move(entryAt), ReloadPolicy{start + reloadDelay}};
    for (int i = 0; i < entries; ++i) timeline.dates.push_back(start + i * spacing);
    return timeline;
}

}  // namespace tessary::widgets
