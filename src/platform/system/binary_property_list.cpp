#include "platform/system/binary_property_list.h"

#include <cstdint>
#include <optional>

namespace tessary::system {
namespace {

constexpr std::string_view magic = "bplist";
constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;

enum class Kind { plain, text, list, dictionary };

/// An object without what it refers to. `count` is in elements for a list, else in bytes.
struct Object {
    Kind kind{};
    std::size_t start{};  ///< of its contents, behind marker and count
    std::size_t count{};
};

class Walk {
public:
    explicit Walk(std::string_view bytes) : bytes_(bytes) {}

    /// Reads the trailer, then everything that is used.
    bool isSound() {
        if (bytes_.size() < headerSize + trailerSize) return false;
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = byteAt(trailer + 6);
        referenceSize_ = byteAt(trailer + 7);
        objects_ = number(trailer + 8, 8);
        const std::size_t top = number(trailer + 16, 8);
        table_ = number(trailer + 24, 8);
        const bool sizesFit = isWidth(offsetSize_) && isWidth(referenceSize_);
        const bool tableFits = table_ >= headerSize && table_ <= trailer && sizesFit &&
                               objects_ <= (trailer - table_) / offsetSize_;
        return tableFits && visit(top, 1, false);
    }

private:
    static bool isWidth(std::size_t size) { return size >= 1 && size <= 8; }

    std::size_t byteAt(std::size_t index) const {
        return static_cast<unsigned char>(bytes_[index]);
    }
    /// Big endian; the caller has seen that it lies inside.
    std::size_t number(std::size_t start, std::size_t size) const {
        std::size_t value = 0;
        for (std::size_t i = 0; i < size; ++i) value = value << 8U | byteAt(start + i);
        return value;
    }

    /// Whether `count` pieces of `size` bytes from `start` on lie in front of the table.
    bool fits(std::size_t start, std::size_t count, std::size_t size = 1) const {
        return start <= table_ && count <= (table_ - start) / size;
    }
    bool spend(std::size_t bytes) {
        spent_ += bytes;
        return spent_ <= largestUnfoldedPropertyList;
    }

    /// The object `index` and all that it refers to.
    bool visit(std::size_t index, std::size_t depth, bool asKey) {
        if (index >= objects_ || depth > deepestPropertyList) return false;
        const auto object = objectAt(number(table_ + index * offsetSize_, offsetSize_));
        if (!object || (asKey && object->kind != Kind::text)) return false;
        const bool isLeaf = object->kind == Kind::plain || object->kind == Kind::text;
        const std::size_t width = isLeaf ? 1 : referenceSize_;
        const std::size_t pieces = object->kind == Kind::dictionary ? 2 : 1;
        if (!fits(object->start, object->count, width * pieces)) return false;
        if (!spend(1 + object->count * width * pieces)) return false;
        return isLeaf || visitAll(*object, object->count * pieces, depth);
    }

    /// A dictionary names all its keys before its values.
    bool visitAll(const Object& object, std::size_t references, std::size_t depth) {
        const std::size_t keys = object.kind == Kind::dictionary ? object.count : 0;
        for (std::size_t i = 0; i < references; ++i) {
            const std::size_t index = number(object.start + i * referenceSize_, referenceSize_);
            if (!visit(index, depth + 1, i < keys)) return false;
        }
        return true;
    }

    /// The marker's upper half is the kind, its lower half a size, or 15 for one that follows.
    std::optional<Object> objectAt(std::size_t offset) const {
        if (offset < headerSize || !fits(offset, 1)) return std::nullopt;
        const std::size_t marker = byteAt(offset);
        const std::size_t low = marker & 15U;
        switch (marker >> 4U) {
            case 0x0: return low == 8 || low == 9 ? plain(offset, 0) : std::nullopt;
            case 0x1: return low <= 4 ? plain(offset, std::size_t{1} << low) : std::nullopt;
            case 0x2: return low == 2 || low == 3 ? plain(offset, low * 4 - 4) : std::nullopt;
            case 0x3: return low == 3 ? plain(offset, 8) : std::nullopt;
            case 0x4: return counted(Kind::plain, offset, low, 1);
            case 0x5: return counted(Kind::text, offset, low, 1);
            case 0x6: return counted(Kind::text, offset, low, 2);
            case 0x8: return low <= 7 ? plain(offset, low + 1) : std::nullopt;
            case 0xA: return counted(Kind::list, offset, low, 1);
            case 0xD: return counted(Kind::dictionary, offset, low, 1);
            default: return std::nullopt;
        }
    }
    static std::optional<Object> plain(std::size_t offset, std::size_t size) {
        return Object{Kind::plain, offset + 1, size};
    }
    /// With `unit` bytes to each of its count.
    std::optional<Object> counted(Kind kind, std::size_t offset, std::size_t low,
                                  std::size_t unit) const {
        if (low < 15) return Object{kind, offset + 1, low * unit};
        if (!fits(offset + 1, 1)) return std::nullopt;
        const std::size_t marker = byteAt(offset + 1);
        const std::size_t size = std::size_t{1} << (marker & 15U);
        if (marker >> 4U != 1 || size > 8 || !fits(offset + 2, size)) return std::nullopt;
        const std::size_t count = number(offset + 2, size);
        if (count > bytes_.size()) return std::nullopt;
        return Object{kind, offset + 2 + size, count * unit};
    }

    std::string_view bytes_;
    std::size_t offsetSize_{};
    std::size_t referenceSize_{};
    std::size_t objects_{};
    std::size_t table_{};
    std::size_t spent_{};
};

}  // namespace

bool isBinaryPropertyList(std::string_view bytes) { return bytes.starts_with(magic); }

bool isSoundBinaryPropertyList(std::string_view bytes) { return Walk{bytes}.isSound(); }

}  // namespace tessary::system
