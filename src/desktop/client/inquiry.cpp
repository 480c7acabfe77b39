#include "desktop/client/inquiry.h"

namespace tessary::client {

void Inquiry::start() {
    stale_ = awaited_ != 0;
    if (!stale_) begin_();
}

void Inquiry::ask(const Request& request, Extension::Answer answer) {
    ++awaited_;
    const std::weak_ptr<int> life{life_};
    extension_.ask(request, [this, life, answer = std::move(answer)](const Reply& reply) {
        if (life.expired()) return;
        answer(reply);
        if (life.expired()) return;
        if (--awaited_ == 0 && std::exchange(stale_, false)) begin_();
    });
}

}  // namespace tessary::client
