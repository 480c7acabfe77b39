// Lines of a process, cut from its bytes as they come: one that never ends is not waited for.
//
//     LineReader reader{1000};
//     reader.feed("one\ntw", take);      // take("one")
//     reader.feed("o\n", take);          // take("two")
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tessary::client {

class LineReader {
public:
    explicit LineReader(std::size_t longest) : longest_{longest} {}

    /// Takes bytes, and tells each line that ends among them, without its newline. False once a
    /// line is longer than it may be: then nothing is told or kept any more.
    bool feed(std::string_view bytes, const std::function<void(std::string_view)>& take);

    /// What has come since the last newline.
    const std::string& open() const { return open_; }

private:
    std::size_t longest_;
    std::string open_{};
    bool broken_{};
};

}  // namespace tessary::client
