#include "platform/foundation/nearest.h"

#include <algorithm>

#include "platform/foundation/letters.h"

namespace tessary::foundation {

namespace {

bool same(char one, char other) { return small(one) == small(other); }

/// The least number of edits between the beginnings of both, for all of them.
std::size_t edits(std::string_view one, std::string_view other) {
    std::vector<std::vector<std::size_t>> count(one.size() + 1,
                                                std::vector<std::size_t>(other.size() + 1));
    for (std::size_t i = 0; i <= one.size(); ++i) {
        for (std::size_t j = 0; j <= other.size(); ++j) {
            std::size_t& least = count[i][j] = i + j;
            if (i == 0 || j == 0) continue;
            const std::size_t replaced = same(one[i - 1], other[j - 1]) ? 0 : 1;
            least = std::min(
                {count[i - 1][j] + 1, count[i][j - 1] + 1, count[i - 1][j - 1] + replaced});
            const bool areSwapped =
                i > 1 && j > 1 && same(one[i - 1], other[j - 2]) && same(one[i - 2], other[j - 1]);
            if (areSwapped) least = std::min(least, count[i - 2][j - 2] + 1);
        }
    }
    return count.back().back();
}

bool begins(std::string_view word, std::string_view with) {
    return with.size() > 2 && word.size() > with.size() &&
           std::equal(with.begin(), with.end(), word.begin(), same);
}

/// None for words that nobody takes for one another.
std::optional<std::size_t> distance(std::string_view word, std::string_view known) {
    const auto [shorter, longer] = std::minmax({word.size(), known.size()});
    const std::size_t most = longer / 3;
    if (begins(known, word)) return std::min(longer - shorter, most + 1);
    if (longer - shorter > most) return std::nullopt;  // so that no long text is gone through
    const std::size_t count = edits(word, known);
    return count <= most ? std::optional{count} : std::nullopt;
}

}  // namespace

std::optional<std::string> nearest(std::string_view word, const std::vector<std::string>& known) {
    std::optional<std::string> best;
    std::size_t least = 0;
    for (const std::string& each : known) {
        const auto far = distance(word, each);
        if (!far || (best && *far >= least)) continue;
        best = each;
        least = *far;
    }
    return best;
}

}  // namespace tessary::foundation
