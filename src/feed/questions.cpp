#include "feed/questions.h"

#include <utility>

#include "platform/foundation/json_decoding.h"
#include "platform/foundation/json_writing.h"

namespace tessary::feed {

using aws::Trouble;
using rounds::PageAnswer;
using rounds::Reply;

namespace {

/// Twice: the ring hands out none that the service has refused a second time.
constexpr int mostRefusals = 2;

Reply replyOf(const aws::KeyFault& fault) {
    if (fault.authExpired) return rounds::SignInExpired{fault.endedMs, fault.words};
    return Trouble{Trouble::Kind::lasting, fault.message()};
}

/// What is not a page is as it came.
PageAnswer pageOf(const rounds::SignInExpired& expired) { return expired; }
PageAnswer pageOf(const Trouble& trouble) { return trouble; }
PageAnswer pageOf(const std::string& body) {
    auto page = foundation::decodeJSON<aws::AlarmsPage>(body);
    if (page) return *std::move(page);
    return Trouble{Trouble::Kind::passing,
                   "The answer is not understood: " + page.fault().message()};
}

}  // namespace

rounds::AskPage Questions::forAlarms() {
    return [this](const rounds::Target& target, const std::optional<std::string>& next,
                  const rounds::TakePage& take) {
        const aws::AlarmsQuery query{.state = "ALARM", .next = next};
        const auto page = [take](const Reply& reply) {
            take(std::visit([](const auto& said) { return pageOf(said); }, reply));
        };
        ask({{target.profile, target.region, "DescribeAlarms", foundation::toJSON(query)},
             watched_.isUsual ? "" : target.profile,
             page});
    };
}

rounds::Ask Questions::forPins() {
    return [this](const rounds::Question& question, const rounds::TakeReply& take) {
        ask({question, question.profile, take});
    };
}

void Questions::ask(const Asked& asked) {
    if (ring_.isReady(asked.profile)) return send(asked);
    client_.when(
        [this, asked] { return ring_.isReady(asked.profile); },
        [this, asked](bool isReady) {
            if (isReady) return send(asked);
            asked.take(Trouble{Trouble::Kind::passing, "Nobody has told the keys in time"});
        });
}

void Questions::send(const Asked& asked) {
    const auto& [profile, region, action, body] = asked.question;
    const auto keys = ring_.keysOf(asked.profile);
    if (!keys) {
        keyless_ += keys.fault().authExpired ? 0 : 1;
        return asked.take(replyOf(keys.fault()));
    }
    ++count_;
    client_.call(
        {.url = surroundings_.endpointOf({profile, region}),
         .region = region,
         .action = action,
         .body = body,
         .keys = *keys},
        [this, asked, keys = *keys](const aws::Answer& answer) { take(asked, keys, answer); });
}

void Questions::take(Asked asked, const aws::Keys& keys, const aws::Answer& answer) {
    if (answer) return asked.take(*answer);
    const auto& trouble = answer.fault();
    if (trouble.kind != Trouble::Kind::tokenExpired) return asked.take(trouble);
    ring_.forget(asked.profile, keys);
    if (++asked.keysRefused < mostRefusals) return ask(asked);
    asked.take(rounds::SignInExpired{.words = trouble.words});
}

}  // namespace tessary::feed
