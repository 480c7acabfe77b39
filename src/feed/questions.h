// What a round asks CloudWatch, with the keys of each profile.
//
//     Questions questions{ring, client, surroundings, watched};
//     AlarmsRound alarms{watched.targets, questions.forAlarms()};
//     PinsRound pins{settings, known, now, questions.forPins()};
//     alarms.start();
//     pins.start();
//     client.run();
#pragma once

#include <optional>
#include <string>

#include "feed/aws/client.h"
#include "feed/aws/key_ring.h"
#include "feed/rounds/alarms_round.h"
#include "feed/rounds/pins_round.h"
#include "feed/watched.h"

namespace tessary::feed {

/// Has to outlive the client's run. Keys that are refused because they have expired are fetched
/// anew, once.
class Questions {
public:
    Questions(aws::KeyRing& ring, aws::Client& client, const Surroundings& surroundings,
              const Watched& watched)
        : ring_(ring), client_(client), surroundings_(surroundings), watched_(watched) {}

    rounds::AskPage forAlarms();
    rounds::Ask forPins();
    /// How many calls have been made.
    int count() const { return count_; }
    /// Nobody had keys. One whose sign-in has expired is not meant: what becomes of it is known.
    bool areInVain() const { return keyless_ > 0 && count_ == 0; }

private:
    struct Asked {
        rounds::Question question{};
        std::string profile{};  ///< whose keys; of none in particular where it is empty
        rounds::TakeReply take{};
        int keysRefused{};
    };
    void ask(const Asked& asked);
    void send(const Asked& asked);
    void take(Asked asked, const aws::Keys& keys, const aws::Answer& answer);

    aws::KeyRing& ring_;
    aws::Client& client_;
    const Surroundings& surroundings_;
    const Watched& watched_;
    int count_{}, keyless_{};
};

}  // namespace tessary::feed
