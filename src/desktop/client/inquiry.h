// What a window wants to know from the extension: a few questions, which may lead to others, and
// all of them anew whenever something has changed.
//
//     Inquiry inquiry{extension, [&] { inquiry.ask({.request = "list"}, fill); }};
//     inquiry.start();
//     inquiry.start();     // begins anew once the first time's answers have come
//
// Once it is gone no answer is told any more.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "desktop/client/extension.h"

namespace tessary::client {

class Inquiry {
public:
    /// `begin` asks the first questions.
    Inquiry(Extension& extension, std::function<void()> begin)
        : extension_{extension}, begin_{std::move(begin)} {}
    Inquiry(const Inquiry&) = delete;
    Inquiry& operator=(const Inquiry&) = delete;
    ~Inquiry() = default;

    /// Begins; while answers are under way, once they have come, however often it is called until
    /// then.
    void start();

    /// Asks; `answer` may ask on, or end this.
    void ask(const Request& request, Extension::Answer answer);

private:
    Extension& extension_;
    std::function<void()> begin_;
    int awaited_{};  ///< answers under way
    bool stale_{};
    std::shared_ptr<int> life_{std::make_shared<int>()};
};

}  // namespace tessary::client
