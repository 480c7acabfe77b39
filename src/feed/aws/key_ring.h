// The keys of each profile, as long as they hold, and whom to ask for new ones.
//
//     KeyRing ring{KeySources::ofEnvironment(), foundation::wallClock, system::runChild};
//     const auto keys = ring.keysOf("corp");
//     keys->id                                 // "AKIDEXAMPLE"
//     keys.fault().message()                   // "The sign-in has expired; aws sso login --profile corp"
//     ring.forget("corp", *keys);              // a call was answered that they have expired
//
// Keys that stand in a file, and those that a credential_process prints, are had directly; of
// anything else the AWS command line knows how to get them. For one thread,
// though programs are waited for on others.
#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "feed/aws/keys.h"
#include "feed/aws/profiles.h"
#include "platform/foundation/date.h"
#include "platform/foundation/result.h"
#include "platform/system/child.h"

namespace tessary::aws {

/// Why a profile has no keys. None of it ever holds a key.
struct KeyFault {
    bool authExpired{};                     ///< somebody has to sign in
    std::optional<std::int64_t> endedMs{};  ///< when the sign-in ended, where that is known
    std::string words{};                    ///< one line, fit for a terminal
    std::string remedy{};                   ///< what to type

    /// Both.
    std::string message() const { return words + (remedy.empty() ? "" : "; " + remedy); }
    bool operator==(const KeyFault&) const = default;
};

/// Where keys come from.
struct KeySources {
    std::filesystem::path config{};
    std::filesystem::path credentials{};
    std::filesystem::path signIns{};  ///< the folder of the files that sign-ins leave
    std::string usual{"default"};     ///< the profile that counts where none is named
    std::optional<Keys> own{};        ///< the environment's, which come before that

    /// As the AWS tools find them.
    static KeySources ofEnvironment();
};

class KeyRing {
public:
    using Fetched = foundation::Result<Keys, KeyFault>;
    using Run =
        std::function<foundation::Result<system::Ended, system::ChildFault>(const system::Errand&)>;

    KeyRing(KeySources sources, foundation::Clock clock, Run run);

    /// Of a profile; of the environment or the usual profile where the name is empty. A lease is
    /// kept until five minutes before its end (15 where it has none) or until the tools' files
    /// change. An expired sign-in is asked about again after five minutes, or as soon as somebody
    /// signs in; a program that failed, once ten times as long as it took has passed. It may take
    /// as long as a program may run.
    Fetched keysOf(const std::string& profile);

    /// Whether `keysOf` would not have to wait. Where it would, what it waits for is begun, beside
    /// that of other profiles, and goes on by itself.
    bool isReady(const std::string& profile);

    /// The service says that these keys have expired: they are fetched anew, once. The second time
    /// within five minutes the sign-in counts as expired. Of keys that have been replaced since,
    /// nothing is said.
    void forget(const std::string& profile, const Keys& refused);

private:
    /// What tells that a file has changed.
    struct Mark {
        std::filesystem::file_time_type written{std::filesystem::file_time_type::min()};
        std::uintmax_t size{};
        bool operator==(const Mark&) const = default;
    };
    struct Marks {
        std::vector<Mark> settings{};
        Mark signIns{};  ///< the newest file's time, and how many there are
        bool operator==(const Marks&) const = default;
    };
    struct Held {
        Fetched what;
        std::string remedy{};  ///< should they turn out to have expired
        std::int64_t sinceMs{};
        std::int64_t untilMs{};
        Marks seen{};
        bool isForgotten{};
        bool isSecond{};  ///< fetched because those before were refused

        bool holds(const Marks& marks, std::int64_t nowMs) const;
    };

    bool holds(const std::string& profile, const Marks& marks) const;
    void settle(const std::string& profile, Held held);
    Held fetched(const std::string& profile, const Marks& marks) const;
    Marks marks() const;
    std::int64_t nowMs() const;

    KeySources sources_;
    foundation::Clock clock_;
    Run run_;
    std::map<std::string, Held> held_{};                   ///< by profile
    std::map<std::string, std::future<Held>> underWay_{};  ///< ends before the rest does
};

}  // namespace tessary::aws
