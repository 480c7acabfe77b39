#include "desktop/client/complaints.h"

#include <string>

#include "desktop/glib/note.h"

namespace tessary::client {

bool Allowance::grants(std::size_t bytes) {
    const auto now = std::chrono::steady_clock::now();
    if (now - begun_ >= std::chrono::minutes{1}) begun_ = now, spent_ = 0;
    if (bytes > bytesPerMinute - spent_) return false;
    spent_ += bytes;
    return true;
}

bool Complaints::take(std::string_view bytes) {
    const bool isWithin = own_.grants(bytes.size());
    leftOut_ += bytes.size();
    const bool areLines = lines_.feed(bytes, [this](auto line) { pass(line, line.size() + 1); });
    return areLines && isWithin;
}

void Complaints::end() {
    const auto& rest = lines_.open();
    if (!rest.empty()) pass(rest, rest.size());
    if (leftOut_ > 0) glib::note("extension: " + std::to_string(leftOut_) + " bytes more left out");
    leftOut_ = 0;
}

void Complaints::pass(std::string_view line, std::size_t bytes) {
    const auto words = "extension: " + std::string{line};
    if (!passed_->grants(glib::noteLine(words).size())) return;
    glib::note(words);
    leftOut_ -= bytes;
}

}  // namespace tessary::client
