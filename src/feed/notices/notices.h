// What a person is told of a round: alarms that enter ALARM and leave it, and sign-ins that expire.
//
//     const auto told = tell(memory.said, targets, outcomes, now);
//     told.notices[0].title                     // "In ALARM: orders-db-cpu-high"
//     memory.said = told.said;                  // none of it is told again
//
// The first answer of a target tells nothing: whoever starts to watch knows. A target that failed
// tells nothing either, for an alarm has not left ALARM because nobody could ask. An alarm that
// goes to and fro is told once in ten minutes, and as it stands then.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "feed/rounds/alarms_round.h"
#include "feed/rounds/targets.h"

namespace tessary::notices {

struct Notice {
    std::string matter{};  ///< what it is of; the next of the same takes its place
    std::string title{};   ///< plain text, as the body is
    std::string body{};
    std::string link{};  ///< what a click on it opens
    bool isUrgent{};
    bool operator==(const Notice&) const = default;
};

/// An alarm that was told to be in ALARM within the last ten minutes.
struct Recent {
    std::string name{};
    std::int64_t toldMs{};
    bool operator==(const Recent&) const = default;
};

/// What is known to have been said of a target, or to need no saying.
struct Said {
    std::string profile{};
    std::string region{};
    bool authExpired{};
    std::optional<std::vector<std::string>> firing{};  ///< names in order; none before any answer
    std::vector<Recent> recent{};
    bool operator==(const Said&) const = default;
};

struct Telling {
    std::vector<Notice> notices{};
    std::vector<std::string> over{};  ///< matters whose notices are not true any more
    std::vector<Said> said{};         ///< of the targets, in no order
};

/// The outcomes are the targets', in their order. More than three changes of alarms are one notice
/// with a count, and so are more than three sign-ins. An alarm whose name is left out is never
/// told.
Telling tell(const std::vector<Said>& before, const std::vector<rounds::Target>& targets,
             const std::vector<rounds::Outcome>& outcomes, std::int64_t nowMs);

/// The text where <, > and & mean something: "a < b" gives "a &lt; b".
std::string inMarkup(const std::string& text);

}  // namespace tessary::notices

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::notices::Recent> = std::tuple{
    Field{"name", &tessary::notices::Recent::name},
    Field{"toldMs", &tessary::notices::Recent::toldMs},
};
template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::notices::Said> = std::tuple{
    Field{"profile", &tessary::notices::Said::profile},
    Field{"region", &tessary::notices::Said::region},
    Field{"authExpired", &tessary::notices::Said::authExpired},
    Field{"firing", &tessary::notices::Said::firing},
    Field{"recent", &tessary::notices::Said::recent},
};
