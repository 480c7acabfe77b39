#include "desktop/client/line_reader.h"

#include <utility>

namespace tessary::client {

bool LineReader::feed(std::string_view bytes, const std::function<void(std::string_view)>& take) {
    while (!broken_ && !bytes.empty()) {
        const auto end = bytes.find('\n');
        const auto part = bytes.substr(0, end);
        broken_ = part.size() > longest_ - open_.size();
        if (broken_) {
            std::string{}.swap(open_);
        } else if (end == std::string_view::npos) {
            open_ += part;
            break;
        } else {
            take(std::exchange(open_, {}) += part);
            bytes.remove_prefix(end + 1);
        }
    }
    return !broken_;
}

}  // namespace tessary::client
