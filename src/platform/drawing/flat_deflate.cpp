#include "platform/drawing/flat_deflate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <libdeflate.h>
#include <span>
#include <utility>

namespace tessary::drawing {

namespace {

constexpr std::size_t longestMatch = 258;  // bytes
constexpr std::size_t farthestMatch = 32768;

/// A code of the format's fixed alphabet, its bits in the order in which they are written.
struct Code {
    std::uint32_t bits{};
    unsigned length{};
};

constexpr Code reversed(std::uint32_t code, unsigned length) {
    std::uint32_t bits = 0;
    for (unsigned i = 0; i < length; ++i) bits |= (code >> i & 1U) << (length - 1 - i);
    return {bits, length};
}

/// Literals and lengths: 0 to 255 are bytes, 256 ends the data, 257 and up are lengths.
constexpr Code fixedCode(std::uint32_t symbol) {
    if (symbol < 144) return reversed(0x30 + symbol, 8);
    if (symbol < 256) return reversed(0x190 + symbol - 144, 9);
    if (symbol < 280) return reversed(symbol - 256, 7);
    return reversed(0xC0 + symbol - 280, 8);
}

/// A symbol of the format that stands for a range of values, told apart by extra bits.
struct Range {
    std::uint32_t first{};
    unsigned extraBits{};
};

/// Ranges that follow one another from `first` on, `perSize` of each size; the sizes double from
/// the third such group on.
template <std::size_t count>
constexpr std::array<Range, count> rangesFrom(std::uint32_t first, unsigned perSize) {
    std::array<Range, count> ranges{};
    for (unsigned i = 0; i < count; ++i) {
        const unsigned extra = i < 2 * perSize ? 0 : i / perSize - 1;
        ranges[i] = {first, extra};
        first += 1U << extra;
    }
    return ranges;
}

/// The longest length has a symbol of its own.
constexpr auto lengthRanges = [] {
    auto ranges = rangesFrom<29>(3, 4);
    ranges.back() = {longestMatch, 0};
    return ranges;
}();
constexpr auto distanceRanges = rangesFrom<30>(1, 2);

/// What is written for a value: the symbol's code with the extra bits behind it.
template <class SymbolCode>
constexpr Code codeIn(std::span<const Range> ranges, std::uint32_t value, SymbolCode symbolCode) {
    std::size_t i = ranges.size() - 1;
    while (ranges[i].first > value) --i;
    const Code code = symbolCode(static_cast<std::uint32_t>(i));
    return {code.bits | (value - ranges[i].first) << code.length,
            code.length + ranges[i].extraBits};
}

constexpr auto byteCodes = [] {
    std::array<Code, 256> codes{};
    for (std::uint32_t byte = 0; byte < codes.size(); ++byte) codes[byte] = fixedCode(byte);
    return codes;
}();

constexpr auto lengthCodes = [] {
    std::array<Code, longestMatch + 1> codes{};
    for (std::uint32_t length = 3; length < codes.size(); ++length)
        codes[length] = codeIn(lengthRanges, length, [](auto i) { return fixedCode(257 + i); });
    return codes;
}();

Code distanceCode(std::size_t distance) {
    return codeIn(distanceRanges, static_cast<std::uint32_t>(distance),
                  [](auto i) { return reversed(i, 5); });
}

class BitWriter {
public:
    void write(Code code) {
        pending_ |= std::uint64_t{code.bits} << held_;
        held_ += code.length;
        if (held_ >= 32) flush(4);
    }
    void match(std::size_t length, Code distance) {
        // The last piece must be long enough to be a match as well.
        while (length > 0) {
            const std::size_t rest = length - std::min(length, longestMatch);
            const std::size_t piece = rest == 0 || rest >= 3 ? length - rest : length - rest - 3;
            write(lengthCodes[piece]);
            write(distance);
            length -= piece;
        }
    }
    std::string finished() {
        write(fixedCode(256));
        flush((held_ + 7) / 8);
        return std::move(bytes_);
    }

private:
    void flush(unsigned count) {
        std::array<char, 8> bytes{};
        std::memcpy(bytes.data(), &pending_, bytes.size());
        bytes_.append(bytes.data(), count);
        pending_ >>= 8 * count;
        held_ -= std::min(held_, 8 * count);
    }
    std::string bytes_{};
    std::uint64_t pending_{};
    unsigned held_{};
};

// A row of plain pixels is summed and compared as the bytes that it is in memory.
static_assert(std::endian::native == std::endian::little);

/// A pixel as the file has it, its bytes red, green, blue, alpha from the lowest on.
constexpr std::uint32_t opaquePixel(std::uint32_t pixel) {
    return (pixel & 0xFF00FF00U) | (pixel >> 16U & 0xFFU) | (pixel & 0xFFU) << 16U;
}
constexpr std::uint32_t plainPixel(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    if (alpha == 255) return opaquePixel(pixel);
    if (alpha == 0) return 0;
    const auto plain = [&](std::uint32_t component) {
        return std::min(((component & 0xFFU) * 255 + alpha / 2) / alpha, 255U);
    };
    return plain(pixel >> 16U) | plain(pixel >> 8U) << 8U | plain(pixel) << 16U | alpha << 24U;
}

void convertRow(std::span<const std::uint32_t> from, std::span<std::uint32_t> to) {
    std::uint32_t common = 0xFFFFFFFFU;
    for (const std::uint32_t pixel : from) common &= pixel;
    const bool opaque = common >> 24U == 255;
    // Two loops, so that the usual one, without a branch, is done several pixels at a time.
    if (opaque)
        std::transform(from.begin(), from.end(), to.begin(), opaquePixel);
    else
        std::transform(from.begin(), from.end(), to.begin(), plainPixel);
}

/// How many pixels two stretches of a row have in common from their start.
std::size_t commonLength(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin()).first - a.begin());
}

class Compressor {
public:
    explicit Compressor(const Pixels& pixels)
        : pixels_(pixels),
          width_(static_cast<std::size_t>(pixels.width)),
          rowBytes_(1 + 4 * width_),
          leftCode_(distanceCode(4)),
          aboveCode_(distanceCode(std::min(rowBytes_, farthestMatch))),
          above_(width_),
          current_(width_) {}

    std::string stream() {
        std::string result = "\x78\x01";  // deflate, window of 32 KiB, quickest
        out_.write({1, 1});               // the only block
        out_.write({1, 2});               // of fixed codes
        for (std::size_t y = 0; y < static_cast<std::size_t>(pixels_.height); ++y) row(y);
        result += out_.finished();
        for (const unsigned shift : {24U, 16U, 8U, 0U})
            result += static_cast<char>(checksum_ >> shift & 0xFFU);
        return result;
    }

private:
    void row(std::size_t y) {
        const std::uint32_t* source = pixels_.values.data() + y * width_;
        const bool repeated = y > 0 && rowBytes_ <= farthestMatch &&
                              std::memcmp(source, source - width_, 4 * width_) == 0;
        if (!repeated) {
            above_.swap(current_);
            convertRow({source, width_}, current_);
        }
        constexpr char filter = 0;
        checksum_ = libdeflate_adler32(checksum_, &filter, 1);
        checksum_ = libdeflate_adler32(checksum_, current_.data(), 4 * width_);
        if (repeated) return out_.match(rowBytes_, aboveCode_);
        out_.write(byteCodes[0]);
        for (std::size_t x = 0; x < width_;) x += piece(y, x);
    }

    /// Writes what follows at a pixel of the current row; the number of pixels it covers.
    std::size_t piece(std::size_t y, std::size_t x) {
        const std::size_t position = y * rowBytes_ + 1 + 4 * x;
        const std::uint32_t pixel = current_[x];
        Recent& recent = recents_[pixel * 0x9E3779B1U >> 22U];
        const Recent former = std::exchange(recent, {pixel, position});

        const std::span rest{current_.data() + x, width_ - x};
        const bool hasAbove = y > 0 && rowBytes_ <= farthestMatch;
        const std::size_t above =
            hasAbove ? commonLength(rest, {above_.data() + x, width_ - x}) : 0;
        const bool hasLeft = x > 0 && above < worthTaking;
        const std::size_t left =
            hasLeft ? commonLength(rest, {current_.data() + x - 1, width_ - x}) : 0;
        if (left > above) return matched(left, leftCode_);
        if (above > 0) return matched(above, aboveCode_);
        if (former.position != 0 && former.pixel == pixel &&
            position - former.position <= farthestMatch)
            return matched(1, distanceCode(position - former.position));
        for (unsigned shift = 0; shift < 32; shift += 8)
            out_.write(byteCodes[pixel >> shift & 0xFFU]);
        return 1;
    }

    std::size_t matched(std::size_t pixels, Code distance) {
        out_.match(4 * pixels, distance);
        return pixels;
    }

    /// A repetition this long is taken without looking for a longer one, in pixels.
    static constexpr std::size_t worthTaking = 32;

    /// Where a colour was met last, in bytes from the start of the rows; 0 is no pixel's place.
    struct Recent {
        std::uint32_t pixel{};
        std::size_t position{};
    };

    const Pixels& pixels_;
    std::size_t width_;
    std::size_t rowBytes_;
    Code leftCode_;
    Code aboveCode_;
    std::vector<std::uint32_t> above_;
    std::vector<std::uint32_t> current_;
    std::array<Recent, 1024> recents_{};
    std::uint32_t checksum_{1};
    BitWriter out_{};
};

}  // namespace

std::string compressedRows(const Pixels& pixels) { return Compressor{pixels}.stream(); }

}  // namespace tessary::drawing
