// An extension that answers when the test says so.
#pragma once

#include <deque>
#include <utility>

#include "desktop/client/extension.h"

namespace tessary::client {

class FakeExtension : public Extension {
public:
    void ask(const Request& request, Answer answer) override {
        asked.emplace_back(request, std::move(answer));
    }
    void prepare() override {}
    void hurry() override {}
    void moveTo(const std::optional<std::string>&) override {}

    /// Answers the question that has waited longest.
    void answer(const Reply& reply) {
        const auto [request, answer] = std::move(asked.at(0));
        asked.pop_front();
        answer(reply);
    }

    std::deque<std::pair<Request, Answer>> asked{};
};

}  // namespace tessary::client
