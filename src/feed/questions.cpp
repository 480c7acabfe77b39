#include "feed/questions.h"

#include <utility>

#include "platform/foundation/json_decoding.h"
#include "platform/foundation/json_writing.h"

namespace tessary::feed {

using aws::Trouble;
using rounds::PageAnswer;

namespace {

/// Twice: the ring hands out none that the service has refused a second time.
constexpr int mostRefusals = 2;

PageAnswer answerOf(const aws::KeyFault& fault) {
    if (fault.authExpired) return rounds::SignInExpired{fault.endedMs, fault.words};
    return Trouble{Trouble::Kind::lasting, fault.message()};
}

PageAnswer pageOf(const std::string& body) {
    auto page = foundation::decodeJSON<aws::AlarmsPage>(body);
    if (page) return *std::move(page);
    return Trouble{Trouble::Kind::passing,
                   "The answer is not understood: " + page.fault().message()};
}

}  // namespace

rounds::AskPage Questions::forAlarms() {
    return [this](const rounds::Target& target, const std::optional<std::string>& next,
                  rounds::TakePage take) {
        const aws::AlarmsQuery query{.state = "ALARM", .next = next};
        ask({target, foundation::toJSON(query), std::move(take)});
    };
}

void Questions::ask(const Question& question) {
    const auto& target = question.target;
    const auto keys = ring_.keysOf(watched_.isUsual ? "" : target.profile);
    if (!keys) return question.take(answerOf(keys.fault()));
    ++count_;
    client_.call({.url = surroundings_.endpointOf(target),
                  .region = target.region,
                  .action = "DescribeAlarms",
                  .body = question.body,
                  .keys = *keys},
                 [this, question, keys = *keys](const aws::Answer& answer) {
                     take(question, keys, answer);
                 });
}

void Questions::take(Question question, const aws::Keys& keys, const aws::Answer& answer) {
    if (answer) return question.take(pageOf(*answer));
    const auto& trouble = answer.fault();
    if (trouble.kind != Trouble::Kind::tokenExpired) return question.take(trouble);
    ring_.forget(watched_.isUsual ? "" : question.target.profile, keys);
    if (++question.keysRefused < mostRefusals) return ask(question);
    question.take(rounds::SignInExpired{.words = trouble.words});
}

}  // namespace tessary::feed
