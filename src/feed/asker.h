// One round of questions: the widgets' files, and what is known from then on.
//
//     Asker asker{sources};
//     const auto made = asker.round(plan, paths, memory);
//     made.alarms->firing                       // as many as were told
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "feed/aws/client.h"
#include "feed/aws/key_ring.h"
#include "feed/plan.h"
#include "feed/rounds/search.h"
#include "feed/store/store.h"
#include "snapshot/alarms_snapshot.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::feed {

/// Milliseconds since 1970.
std::int64_t nowMs();

/// What came of a round. A file that is not there is left as it stands.
struct Made {
    std::optional<snapshot::AlarmsSnapshot> alarms{};
    std::optional<snapshot::AlarmPinsSnapshot> alarmPins{};
    std::optional<snapshot::MetricPinsSnapshot> metricPins{};
    store::Memory memory{};
    std::vector<rounds::Outcome> outcomes{};  ///< of the targets that are watched
    int calls{};                              ///< that went out
    /// Not in vain: something was asked, waits for a sign-in, or is not due yet.
    bool isAsked{};

    bool hasFiles() const { return alarms || alarmPins || metricPins; }
    /// Puts the files that there are in their places.
    foundation::Result<void> write(const store::Store& store) const;
};

/// Keeps the keys and the connections from one round to the next.
class Asker {
public:
    explicit Asker(const aws::KeySources& sources, aws::Patience patience = {});

    /// Returns within the client's budget, at once where a signal has come to end the feed. A
    /// program that is still asked for keys by then goes on; this is not destroyed before its end.
    Made round(const Plan& plan, const Paths& paths, const store::Memory& before);

    /// Looks at several places side by side, within one budget, with each profile's own keys. What
    /// to type where a sign-in has expired is said with the fault.
    template <class Query>
    std::vector<rounds::Finding<typename rounds::Sought<Query>::Item>> search(
        const Surroundings& around, const std::vector<rounds::Place>& places, const Query& query);

private:
    aws::KeyRing ring_;
    aws::Client client_;
};

}  // namespace tessary::feed
