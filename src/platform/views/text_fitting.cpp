#include "platform/views/text_fitting.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/foundation/utf8.h"

namespace tessary::views {

namespace {

constexpr std::string_view ellipsis = "\u2026";
constexpr std::size_t longestText = 16U << 10U;  // bytes
/// Widths are sums of rounded advances; this much over still fits. In points.
constexpr double tolerance = 1e-3;

// ---- Making a text's lines plain --------------------------------------------------------------

bool isHardBreak(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}
bool isControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// Leaves out the middle of a text that no card has room for.
std::string shortened(std::string_view text) {
    if (text.size() <= longestText) return std::string{text};
    std::size_t head = longestText / 2;
    while (isContinuation(text[head])) --head;
    std::size_t tail = text.size() - longestText / 2;
    while (isContinuation(text[tail])) ++tail;
    return std::string{text.substr(0, head)}.append(text.substr(tail));
}

/// The lines between hard breaks, without control characters. At least one.
std::vector<std::string> paragraphs(std::string_view text) {
    std::vector<std::string> result(1);
    for (std::size_t at = 0; at < text.size();) {
        const auto [value, length] = foundation::leadingCharacter(text.substr(at));
        const auto bytes = text.substr(at, std::max<std::size_t>(length, 1));
        at += bytes.size();
        if (value == '\r' && at < text.size() && text[at] == '\n') continue;
        if (isHardBreak(value))
            result.emplace_back();
        else if (value == '\t')
            result.back() += ' ';
        else if (!isControl(value))
            result.back() += bytes;
    }
    return result;
}

// ---- Wrapping ---------------------------------------------------------------------------------

/// Measures one text in one font; widths at the font's full size.
class Fitter {
public:
    Fitter(std::vector<std::string> lines, const TextStyle& style, Typesetter& typesetter)
        : lines_(std::move(lines)), style_(style), typesetter_(typesetter) {}

    const std::vector<std::string>& lines() const { return lines_; }
    double width(std::string_view line) const { return typesetter_.width(line, style_.font); }
    double longest(const std::vector<std::string>& lines) const {
        double result = 0;
        for (const std::string& line : lines) result = std::max(result, width(line));
        return result;
    }

    /// The lines at a width, at most `most` of them; `rest` is what the last one would have to hold
    /// when there are more.
    struct Wrapped {
        std::vector<std::string> lines{};
        bool complete{true};
        std::string rest{};
    };
    Wrapped wrapped(double room, std::size_t most);

    /// Whether the first line ends in white space, of which its width counts more than is drawn.
    bool endsInSpace() {
        const std::vector<Cluster>& all = clusters(0);
        return !all.empty() && all.back().space;
    }

    /// A text cut so that it fits the room with an ellipsis; at least the ellipsis.
    std::string truncated(const std::string& text, double room) const;

private:
    struct Line {
        std::string text{};
        std::size_t byte{};  ///< where it begins in its paragraph
        std::size_t next{};  ///< the cluster that the next line begins with
        bool endsParagraph{};
    };
    Line nextLine(std::size_t paragraph, std::size_t from, double room);
    bool fitsWhole(const std::string& line, double room) const;
    const std::vector<Cluster>& clusters(std::size_t paragraph);
    std::size_t lineEnd(const std::string& text, const std::vector<Cluster>& clusters,
                        std::size_t from, double room) const;
    std::string remainder(std::size_t paragraph, std::size_t byte) const;
    std::string cutTail(const std::string& text, const std::vector<Cluster>& clusters,
                        double room) const;
    std::string cutMiddle(const std::string& text, const std::vector<Cluster>& clusters,
                          double room) const;

    std::vector<std::string> lines_;
    std::vector<std::vector<Cluster>> clusters_{};
    const TextStyle& style_;
    Typesetter& typesetter_;
};

const std::vector<Cluster>& Fitter::clusters(std::size_t paragraph) {
    clusters_.resize(lines_.size());
    auto& result = clusters_[paragraph];
    if (result.empty()) result = typesetter_.clusters(lines_[paragraph], style_.font);
    return result;
}

std::string slice(const std::string& text, const std::vector<Cluster>& clusters, std::size_t from,
                  std::size_t to) {
    while (to > from && clusters[to - 1].space) --to;
    if (from == to) return {};
    return text.substr(clusters[from].start,
                       clusters[to - 1].start + clusters[to - 1].length - clusters[from].start);
}

/// Where the line that begins at cluster `from` ends: behind the last word that fits, or inside a
/// word that doesn't fit alone. At least one cluster.
std::size_t Fitter::lineEnd(const std::string& text, const std::vector<Cluster>& clusters,
                            std::size_t from, double room) const {
    double taken = 0;
    std::size_t end = from;
    std::size_t wordEnd = from;
    for (; end < clusters.size(); ++end) {
        taken += clusters[end].advance;
        if (!clusters[end].space && taken > room + tolerance) break;
        if (clusters[end].breakAfter) wordEnd = end + 1;
    }
    if (end == clusters.size()) return end;
    if (wordEnd > from) return wordEnd;
    // Shaped by themselves, the pieces of a word may be wider than their shares of it.
    while (end > from + 1 && width(slice(text, clusters, from, end)) > room + tolerance) --end;
    return std::max(end, from + 1);
}

std::string Fitter::remainder(std::size_t paragraph, std::size_t byte) const {
    std::string result = lines_[paragraph].substr(byte);
    for (std::size_t i = paragraph + 1; i < lines_.size(); ++i)
        if (!lines_[i].empty()) result.append(" ").append(lines_[i]);
    return result;
}

Fitter::Line Fitter::nextLine(std::size_t paragraph, std::size_t from, double room) {
    const std::string& text = lines_[paragraph];
    if (from == 0 && width(text) <= room + tolerance) return {text, 0, 0, true};
    const std::vector<Cluster>& all = clusters(paragraph);
    if (all.empty()) return {text, 0, 0, true};
    const std::size_t end = lineEnd(text, all, from, room);
    return {slice(text, all, from, end), all[from].start, end, end == all.size()};
}

/// Whether a line needs no break: what its characters are is then of no interest.
bool Fitter::fitsWhole(const std::string& line, double room) const {
    const std::size_t end = line.find_last_not_of(' ') + 1;
    return width(std::string_view{line}.substr(0, end)) <= room + tolerance;
}

Fitter::Wrapped Fitter::wrapped(double room, std::size_t most) {
    Wrapped result;
    if (most == 1 && !fitsWhole(lines_.front(), room)) return {{}, false, remainder(0, 0)};
    for (std::size_t paragraph = 0; paragraph < lines_.size(); ++paragraph) {
        bool ended = false;
        for (std::size_t from = 0; !ended;) {
            Line line = nextLine(paragraph, from, room);
            ended = line.endsParagraph;
            from = line.next;
            if (result.lines.size() + 1 == most && (!ended || paragraph + 1 < lines_.size())) {
                result.rest = remainder(paragraph, line.byte);
                result.complete = ended && fitsWhole(result.rest, room);
                if (result.complete) result.lines.push_back(std::move(result.rest));
                return result;
            }
            result.lines.push_back(std::move(line.text));
        }
    }
    return result;
}

// ---- Truncating -------------------------------------------------------------------------------

std::string Fitter::cutTail(const std::string& text, const std::vector<Cluster>& clusters,
                            double room) const {
    double taken = width(ellipsis);
    std::size_t keep = 0;
    while (keep < clusters.size() && taken + clusters[keep].advance <= room + tolerance)
        taken += clusters[keep++].advance;
    std::string result;
    do {
        result = slice(text, clusters, 0, keep).append(ellipsis);
    } while (keep-- > 0 && width(result) > room + tolerance);
    return result;
}

std::string Fitter::cutMiddle(const std::string& text, const std::vector<Cluster>& clusters,
                              double room) const {
    const double most = room - width(ellipsis);
    double front = 0;
    double back = 0;
    std::size_t head = 0;
    std::size_t tail = clusters.size();
    while (head < tail) {
        const bool fromFront = front <= back;
        const double next = clusters[fromFront ? head : tail - 1].advance;
        if (front + back + next > most + tolerance) break;
        (fromFront ? front : back) += next;
        fromFront ? ++head : --tail;
    }
    std::string result;
    for (;; head > clusters.size() - tail ? --head : ++tail) {
        std::size_t resume = tail;
        while (resume < clusters.size() && clusters[resume].space) ++resume;
        result = slice(text, clusters, 0, head).append(ellipsis);
        result += slice(text, clusters, resume, clusters.size());
        if (width(result) <= room + tolerance || (head == 0 && tail == clusters.size()))
            return result;
    }
}

std::string Fitter::truncated(const std::string& text, double room) const {
    if (width(ellipsis) > room) return std::string{ellipsis};
    const std::vector<Cluster> clusters = typesetter_.clusters(text, style_.font);
    return style_.truncation == Truncation::middle ? cutMiddle(text, clusters, room)
                                                   : cutTail(text, clusters, room);
}

// ---- Shrinking --------------------------------------------------------------------------------

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

/// How many lines the limit and the height have room for.
std::size_t allowedLines(const TextStyle& style, const Offer& height, double scale) {
    std::size_t most = style.lineLimit ? static_cast<std::size_t>(*style.lineLimit) : unlimited;
    const double room = height.orIdeal(Offer::unbounded().orIdeal(0));
    const double lines = std::floor(room / (style.font.lineHeight() * scale) + tolerance);
    if (lines < static_cast<double>(most)) most = static_cast<std::size_t>(std::max(lines, 1.0));
    return most;
}

/// The largest scale, not below the style's minimum, at which the text needs no more lines than it
/// is allowed; none when there is none.
std::optional<double> fittingScale(Fitter& fitter, const TextStyle& style, double room,
                                   const Offer& height) {
    const auto fits = [&](double scale) {
        return fitter.wrapped(room / scale, allowedLines(style, height, scale)).complete;
    };
    if (fits(1)) return 1;
    if (!fits(style.minimumScale)) return std::nullopt;
    const bool isLine =
        fitter.lines().size() == 1 && allowedLines(style, height, style.minimumScale) == 1;
    if (isLine && !fitter.endsInSpace()) return room / fitter.width(fitter.lines().front());

    double low = style.minimumScale;
    double high = 1;
    for (int step = 0; step < 16; ++step) {
        const double middle = (low + high) / 2;
        (fits(middle) ? low : high) = middle;
    }
    return low;
}

}  // namespace

FittedText fitText(std::string_view text, const TextStyle& style, const Proposal& proposal,
                   Typesetter& typesetter) {
    Fitter fitter{paragraphs(shortened(text)), style, typesetter};
    const double room = proposal.width.orIdeal(Offer::unbounded().orIdeal(0));
    const std::optional<double> fitting = fittingScale(fitter, style, room, proposal.height);

    FittedText result;
    result.scale = fitting.value_or(style.minimumScale);
    const double roomAtScale = room / result.scale;
    Fitter::Wrapped wrapped =
        fitter.wrapped(roomAtScale, allowedLines(style, proposal.height, result.scale));
    result.lines = std::move(wrapped.lines);
    result.isCut = !wrapped.complete;
    if (result.isCut) result.lines.push_back(fitter.truncated(wrapped.rest, roomAtScale));
    result.size = {
        fitter.longest(result.lines) * result.scale,
        static_cast<double>(result.lines.size()) * style.font.lineHeight() * result.scale};
    return result;
}

FittedText fitText(std::string_view text, const std::vector<std::string>& shorter,
                   const TextStyle& style, const Proposal& proposal, Typesetter& typesetter) {
    FittedText fitted = fitText(text, style, proposal, typesetter);
    for (auto each = shorter.begin(); fitted.isCut && each != shorter.end(); ++each)
        fitted = fitText(*each, style, proposal, typesetter);
    return fitted;
}

}  // namespace tessary::views
