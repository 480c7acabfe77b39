// What a round asks CloudWatch, with the keys of each profile.
//
//     Questions questions{ring, client, surroundings, watched};
//     AlarmsRound round{watched.targets, questions.forAlarms()};
//     round.start();
//     client.run();
#pragma once

#include <optional>
#include <string>

#include "feed/aws/client.h"
#include "feed/aws/key_ring.h"
#include "feed/rounds/alarms_round.h"
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
    /// How many calls have been made.
    int count() const { return count_; }

private:
    struct Question {
        rounds::Target target{};
        std::string body{};
        rounds::TakePage take{};
        int keysRefused{};
    };
    void ask(const Question& question);
    void take(Question question, const aws::Keys& keys, const aws::Answer& answer);

    aws::KeyRing& ring_;
    aws::Client& client_;
    const Surroundings& surroundings_;
    const Watched& watched_;
    int count_{};
};

}  // namespace tessary::feed
