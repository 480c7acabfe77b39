// What the desktop has the feed's program do: list what an account has, and pin some of it.
//
//     const Account metrics{Pinnable::metric};
//     const auto errand = listing(metrics, {"AWS/RDS"});     // ... metrics --json -- AWS/RDS
//     const auto offers = offersOf(metrics, runChild(errand));
//     offers->offered.front()      // {"prod/...", "CPUUtilization", "AWS/RDS · ... · us-east-1"}
//     const auto id = pinnedBy(runChild(pinning(metrics, offers->ways.front())));
//
// It is another process, and what it says is not trusted: it is read up to limits and cleaned.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/client/chore.h"
#include "desktop/client/messages.h"
#include "platform/foundation/named_cases.h"
#include "platform/foundation/result.h"
#include "platform/system/child.h"

namespace tessary::client {

/// What a user types to begin, and why.
inline constexpr const char* noneWatched = "No alarms are watched yet.";
inline constexpr const char* watchCommand = "tessary-widgets-feed watch";

/// What widgets show of an account, by the short names of those.
enum class Pinnable { alarm, metric };

/// What is looked for, and the options that say for which container.
struct Account {
    Pinnable pinnable{};
    std::vector<std::string> options{};
};

/// Why there is no answer, and what to type to learn more; nothing where that would not help.
struct Failure {
    std::string words{};
    std::string command{};

    const std::string& message() const { return words; }
};

/// How one is pinned.
struct Way {
    bool pinned{};                     ///< already
    std::string nameSpace{};           ///< a metric's
    std::vector<std::string> words{};  ///< behind `pin`
};

struct Offers {
    std::vector<Pin> offered{};
    std::vector<Way> ways{};  ///< of each
    std::vector<std::string> faults{};
    bool more{};  ///< than are listed

    /// Those of the other that are not here yet; what was wrong is the other's.
    void add(Offers other);
};

/// What narrows a listing: nothing, a namespace, or that and a metric's name.
using Scope = std::vector<std::string>;

system::Errand listing(const Account& account, const Scope& scope);
system::Errand pinning(const Account& account, const Way& way);

/// What the program has printed, or why it could not, in words for a user; the identifier of the
/// new pin.
foundation::Result<Offers, Failure> offersOf(const Account& account, const Chore::Outcome& outcome);
foundation::Result<std::string, Failure> pinnedBy(const Chore::Outcome& outcome);

/// What is to be listed next for what is typed, as long as what was asked for before, each with
/// whether there was more of it, left some out: the namespace that begins the words, then also the
/// word that follows it. A word that begins like nothing listed is a namespace where it looks like
/// one, or where nothing was found.
std::optional<Scope> scopeToAsk(std::string_view words, const Offers& offers,
                                const std::map<Scope, bool>& asked, bool nothingFound);

}  // namespace tessary::client

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::client::Pinnable> =
    tessary::foundation::NamedCases<tessary::client::Pinnable, 2>{{
        {tessary::client::Pinnable::alarm, "alarm"},
        {tessary::client::Pinnable::metric, "metric"},
    }};
