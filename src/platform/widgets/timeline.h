// What a provider answers with: dated entries and when to ask again.
#pragma once

#include <optional>
#include <vector>

#include "platform/foundation/date.h"

namespace tessary::widgets {

using foundation::Date;

/// Ask for a new timeline once the date has come, not before.
struct ReloadPolicy {
    Date after{};
    bool operator==(const ReloadPolicy&) const = default;
};

/// Entries in ascending order of their dates; the one shown is the latest whose date has come. A
/// placeholder or a snapshot is a single entry without a policy.
template <class Entry>
struct Timeline {
    std::vector<Entry> entries{};
    std::optional<ReloadPolicy> policy{};
    bool operator==(const Timeline&) const = default;
};

}  // namespace tessary::widgets
