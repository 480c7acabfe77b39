// What the commands add to the settings: a file of the feed's own, beside the one that a person
// wrote, which is never rewritten.
//
//     change(file, [&](Additions& added) {
//         added.alarms.push_back(pin);
//         return Result<void>{};
//     });
//     merged(settings, load(file).value()).alarms.back()          // pin
//
// A change is made from what stands there, while nobody else makes one: of two commands at once
// neither loses what the other added. A file that is not understood is left as it is.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "feed/settings/settings.h"
#include "platform/foundation/json_decoding.h"
#include "platform/foundation/result.h"

namespace tessary::additions {

struct Additions {
    std::vector<settings::Watch> watch{};
    std::vector<settings::AlarmPin> alarms{};
    std::vector<settings::MetricPin> metrics{};
    bool operator==(const Additions&) const = default;
};

/// Nothing where there is no file. A fault where it cannot be read, or holds what the settings
/// would refuse.
foundation::Result<Additions> load(const std::filesystem::path& file);

/// A fault of `make` leaves the file as it is. Another's change is waited for, seconds at most.
foundation::Result<void> change(const std::filesystem::path& file,
                                const std::function<foundation::Result<void>(Additions&)>& make);

/// Both; of two pins of a kind with one id the first counts, and the settings' come first.
settings::Settings merged(settings::Settings settings, const Additions& added);

}  // namespace tessary::additions

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::additions::Additions> = std::tuple{
    Field{"watch", &tessary::additions::Additions::watch},
    Field{"alarm", &tessary::additions::Additions::alarms},
    Field{"metric", &tessary::additions::Additions::metrics},
};
