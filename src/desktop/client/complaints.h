// What a process writes to standard error, passed on a line at a time: marked, cleaned, and only so
// much of it.
//
//     Complaints complaints{allowance};
//     complaints.take("out of paper\n");  // tessary-widgets-desktop: extension: out of paper
//     complaints.end();                   // and how much was left out, where there was too much
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string_view>

#include "desktop/client/line_reader.h"

namespace tessary::client {

/// So many bytes a minute.
class Allowance {
public:
    static constexpr std::size_t bytesPerMinute = std::size_t{64} << 10U;

    /// Whether there are as many left; then they are taken.
    bool grants(std::size_t bytes);

private:
    std::chrono::steady_clock::time_point begun_{};
    std::size_t spent_{};
};

class Complaints {
public:
    /// All that share an allowance pass on that much together.
    explicit Complaints(std::shared_ptr<Allowance> passed) : passed_{std::move(passed)} {}

    /// False where the process itself has written more than an allowance.
    bool take(std::string_view bytes);

    void end();

private:
    void pass(std::string_view line, std::size_t bytes);

    std::shared_ptr<Allowance> passed_;
    Allowance own_{};
    LineReader lines_{Allowance::bytesPerMinute};
    std::size_t leftOut_{};
};

}  // namespace tessary::client
