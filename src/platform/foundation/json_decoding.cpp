#include "platform/foundation/json_decoding.h"

#include <algorithm>
#include <rapidjson/error/error.h>
#include <rapidjson/reader.h>

#include "platform/foundation/joined.h"
#include "platform/foundation/json_numbers.h"
#include "platform/foundation/numbers.h"
#include "platform/foundation/utf8.h"

namespace tessary::foundation {
namespace shapes {
namespace {

/// The text as the parser reads it. It hides two things from the parser that it would get wrong:
/// - the end of the text, which the parser takes any NUL for; `atEnd` tells them apart afterwards;
/// - numbers, of which it refuses some that are JSON (an integer of 400 digits, 1e400) since it
///   computes their value even when asked for their text. They are checked and read here, and the
///   parser is shown one character in a number's place: a 0, or a ? that it refuses.
class TextStream {
public:
    using Ch = char;

    explicit TextStream(std::string_view text)
        : begin_(text.data()),
          end_(begin_ + text.size()),
          at_(begin_),
          stop_(end_),
          token_(begin_) {}

    char Peek() const { return at_ != stop_ ? *at_ : standIn_; }
    char Take() {
        if (at_ != stop_) return *at_++;
        return takeStandIn();
    }
    std::size_t Tell() const { return offset(at_); }

    /// Moves to the next token, past white space.
    void startToken() {
        while (at_ != end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) ++at_;
        token_ = at_;
        if (at_ != end_ && (*at_ == '-' || (*at_ >= '0' && *at_ <= '9'))) startNumber();
    }

    bool atEnd() const { return at_ == end_; }
    /// Where the latest token starts.
    std::size_t tokenOffset() const { return offset(token_); }
    /// The latest token that was a number.
    const WrittenNumber& number() const { return number_; }

    // Asked for by the parser's interface; only a parser that writes into its input calls them.
    char* PutBegin() { return nullptr; }
    std::size_t PutEnd(char*) { return 0; }
    void Put(char) {}

private:
    std::size_t offset(const char* place) const { return static_cast<std::size_t>(place - begin_); }

    char takeStandIn() {
        const char taken = standIn_;
        if (standIn_ == '\0') return taken;
        at_ = numberEnd_;
        stop_ = end_;
        standIn_ = '\0';
        return taken;
    }

    void startNumber() {
        const std::string_view rest{at_, static_cast<std::size_t>(end_ - at_)};
        const auto run = rest.substr(0, rest.find_first_not_of("0123456789+-.eE"));
        const auto number = readNumber(run);
        number_ = number.value_or(WrittenNumber{});
        stop_ = at_;
        numberEnd_ = at_ + run.size();
        standIn_ = number ? '0' : '?';
    }

    const char* begin_;
    const char* end_;
    const char* at_;
    const char* stop_;  ///< where `standIn_` is shown instead of what stands there
    const char* token_;
    const char* numberEnd_{};
    char standIn_{};  ///< NUL at the end of the text
    WrittenNumber number_{};
};

/// The parser's name for what it calls before every token; found by the argument's namespace.
[[maybe_unused]] void SkipWhitespace(TextStream& stream) { stream.startToken(); }

std::string_view expectation(Kind kind) {
    switch (kind) {
        case Kind::integer: return "a 64-bit integer";
        case Kind::number: return "a number within a double's range";
        case Kind::flag: return "true or false";
        case Kind::text: return "a text";
        case Kind::bytes: return "a text in base64";
        case Kind::list: return "a list";
        case Kind::map:
        case Kind::record: return "an object";
        case Kind::choice:
        case Kind::any: break;
    }
    return "a value";
}

std::string expectation(const Shape& shape) {
    if (shape.kind != Kind::choice) return std::string{expectation(shape.kind)};
    return joined(shape.alternatives, " or ",
                  [](const auto& each) { return expectation(each.kind); });
}

/// What the parser missed; the last is all that it says of a number or an escape.
std::string_view expectation(rapidjson::ParseErrorCode code) {
    switch (code) {
        case rapidjson::kParseErrorDocumentEmpty: return "a JSON text";
        case rapidjson::kParseErrorDocumentRootNotSingular: return "nothing after the value";
        case rapidjson::kParseErrorValueInvalid: return "a JSON value";
        case rapidjson::kParseErrorObjectMissName: return "a key in quotes";
        case rapidjson::kParseErrorObjectMissColon: return "a colon";
        case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket: return "a comma or }";
        case rapidjson::kParseErrorArrayMissCommaOrSquareBracket: return "a comma or ]";
        case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex: return "four hexadecimal digits";
        case rapidjson::kParseErrorStringUnicodeSurrogateInvalid: return "a surrogate pair";
        case rapidjson::kParseErrorStringMissQuotationMark: return "a closing quotation mark";
        case rapidjson::kParseErrorStringInvalidEncoding: return "valid UTF-8";
        case rapidjson::kParseErrorStringEscapeInvalid: return "a known escape";
        default: return "valid JSON";
    }
}

/// On one line and not for ever: about 40 bytes, what cannot be shown as \xNN.
std::string shortened(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const auto length = leadingCharacterLength(text);
        const auto taken = std::max<std::size_t>(length, 1);
        if (shown.size() + taken > 40) return shown + "…";
        const bool isShowable = length > 1 || (length == 1 && text[0] >= ' ' && text[0] != '\x7F');
        shown += isShowable ? std::string{text.substr(0, length)} : "\\x" + hexadecimal(text[0]);
        text.remove_prefix(taken);
    }
    return shown;
}

/// The word of the text that starts at an offset.
std::string wordAt(std::string_view text, std::size_t offset) {
    const auto rest = text.substr(std::min(offset, text.size()));
    if (rest.empty()) return "the end of the text";
    const auto length = rest.find_first_of(" \t\r\n,:[]{}\"");
    return shortened(rest.substr(0, std::max<std::size_t>(length, 1)));
}

/// Escapes can spell half of a surrogate pair, which the parser passes on as three bytes that no
/// valid UTF-8 holds; raw ones it has refused.
bool holdsLoneSurrogate(std::string_view text) {
    for (auto at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1))
        if (static_cast<unsigned char>(text[at + 1]) >= 0xA0) return true;
    return false;
}

void appendPointerToken(std::string& pointer, std::string_view token) {
    pointer += '/';
    for (const char character : token) {
        if (character == '~')
            pointer += "~0";
        else if (character == '/')
            pointer += "~1";
        else
            pointer += character;
    }
}

/// Takes the parser's events and fills the record: a stack of the values that are open, and a count
/// for the ones that nobody asked for. Each event answers whether to go on.
class Decoder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Decoder> {
public:
    Decoder(const TextStream& stream, const Shape& root, void* record, const Limits& limits,
            const UnreadKeys& unread)
        : stream_(stream), root_(root), record_(record), limits_(limits), unread_(unread) {}

    bool Null() {
        return scalar([&] { return (isInRecord() && member().nullable) || mismatch("null"); });
    }
    bool Bool(bool value) {
        return scalar([&] {
            if (wants(Kind::flag)) return fill(Kind::flag, value);
            return mismatch(value ? "true" : "false");
        });
    }
    bool RawNumber(const char*, rapidjson::SizeType, bool) {
        return scalar([&] {
            const auto& number = stream_.number();
            if (wants(Kind::integer))
                if (const auto value = asInteger(number)) return fill(Kind::integer, *value);
            if (wants(Kind::number))
                if (const auto value = asDouble(number)) return fill(Kind::number, *value);
            return mismatch(shortened(number.text));
        });
    }
    bool String(const char* characters, rapidjson::SizeType length, bool) {
        const std::string_view text{characters, length};
        if (holdsLoneSurrogate(text)) return fail("a surrogate pair", "half of one");
        return scalar([&] {
            if (wants(Kind::text)) return fill(Kind::text, std::string{text});
            if (wants(Kind::bytes))
                if (auto bytes = decodeBase64(text))
                    return fill(Kind::bytes, Bytes{*std::move(bytes)});
            return mismatch('"' + shortened(text) + '"');
        });
    }
    bool Key(const char* characters, rapidjson::SizeType length, bool) {
        const std::string_view key{characters, length};
        if (holdsLoneSurrogate(key)) return fail("a surrogate pair", "half of one");
        if (skippedDepth_ == 0) isInMap() ? insert(key) : selectMember(key);
        return true;
    }
    bool StartObject() { return open(Kind::record, "an object"); }
    bool StartArray() { return open(Kind::list, "a list"); }
    bool EndObject(rapidjson::SizeType) {
        if (skippedDepth_ == 0 && !hasAllMembers()) return false;
        return close();
    }
    bool EndArray(rapidjson::SizeType) { return close(); }

    std::optional<DecodingFault> takeFault() { return std::move(fault_); }

    /// Where the decoder stands, as a JSON pointer.
    std::string path() const {
        std::string pointer;
        for (const auto& value : open_) appendStep(pointer, value);
        if (skippedKey_) appendPointerToken(pointer, *skippedKey_);
        return pointer;
    }

private:
    static constexpr std::size_t noMember = std::numeric_limits<std::size_t>::max();

    /// A list or record whose end has not come yet.
    struct Open {
        const Shape* shape{};
        void* value{};
        std::size_t index{};   ///< elements that are finished; or the member at hand
        std::size_t next{};    ///< the member that is likely to come next
        std::uint64_t seen{};  ///< one bit a member
        Entry entry{};         ///< in a map, the one at hand
    };

    static void appendStep(std::string& pointer, const Open& value) {
        if (value.shape->kind == Kind::list)
            appendPointerToken(pointer, std::to_string(value.index));
        else if (value.entry.value != nullptr)
            appendPointerToken(pointer, value.entry.key);
        else if (value.index != noMember)
            appendPointerToken(pointer, value.shape->members[value.index].key);
    }

    const Member& member() const { return open_.back().shape->members[open_.back().index]; }
    bool isInRecord() const { return !open_.empty() && open_.back().shape->kind == Kind::record; }
    bool isInMap() const { return !open_.empty() && open_.back().shape->kind == Kind::map; }
    bool isSkipping() const { return skippedKey_.has_value(); }

    const Shape& wanted() const {
        if (open_.empty()) return root_;
        return isInRecord() ? *member().shape : *open_.back().shape->element;
    }

    bool wants(Kind kind) const {
        const auto& shape = wanted();
        return shape.kind == kind ||
               std::ranges::find(shape.alternatives, kind, &Alternative::kind) !=
                   shape.alternatives.end();
    }

    /// Where the wanted value goes; asked once a value.
    void* place() const {
        if (open_.empty()) return record_;
        const auto& top = open_.back();
        if (isInMap()) return top.entry.value;
        return isInRecord() ? member().open(top.value) : top.shape->append(top.value);
    }

    template <class Value>
    bool fill(Kind kind, Value value) {
        const auto& alternatives = wanted().alternatives;
        void* to = place();
        if (const auto chosen = std::ranges::find(alternatives, kind, &Alternative::kind);
            chosen != alternatives.end())
            to = chosen->choose(to);
        *static_cast<Value*>(to) = std::move(value);
        return finishValue();
    }
    bool counts() {
        if (++values_ <= limits_.values) return true;
        return fail("at most " + std::to_string(limits_.values) + " values", "more");
    }
    bool finishValue() {
        if (!open_.empty() && !isInRecord()) ++open_.back().index;
        return true;
    }

    /// A value that holds no others, which `take()` makes use of unless it belongs to nobody.
    bool scalar(const auto& take) {
        if (!counts()) return false;
        if (!isSkipping()) return take();
        if (skippedDepth_ == 0) stopSkipping();
        return true;
    }

    void startSkipping(std::string_view key) {
        open_.back().index = noMember;
        skippedKey_ = shortened(key);
    }
    void stopSkipping() { skippedKey_.reset(); }

    void insert(std::string_view key) {
        auto& map = open_.back();
        const auto entry = map.shape->insert(map.value, key);
        map.entry = entry.value_or(Entry{});
        if (!entry) startSkipping(key);
    }

    /// Files mostly keep to the table's order, so the search goes on from where it last ended.
    void selectMember(std::string_view key) {
        auto& record = open_.back();
        const auto members = record.shape->members;
        for (std::size_t step = 0; step < members.size(); ++step) {
            const auto index = (record.next + step) % members.size();
            if (members[index].key != key) continue;
            const auto bit = std::uint64_t{1} << index;
            if ((record.seen & bit) != 0) return leaveUnread(key, true);
            record.seen |= bit;
            record.next = index + 1;
            if (members[index].shape->kind == Kind::any) return startSkipping(key);
            record.index = index;
            return;
        }
        leaveUnread(key, false);
    }

    void leaveUnread(std::string_view key, bool isRepeated) {
        if (unread_) unread_({key, stream_.tokenOffset(), isRepeated, open_.back().shape->members});
        startSkipping(key);
    }

    bool open(Kind kind, std::string_view found) {
        if (!counts()) return false;
        if (open_.size() + skippedDepth_ == limits_.depth)
            return fail("nesting at most " + std::to_string(limits_.depth) + " deep", "more");
        if (isSkipping()) {
            ++skippedDepth_;
            return true;
        }
        const auto& shape = wanted();
        const bool isMap = shape.kind == Kind::map && kind == Kind::record;
        if (shape.kind != kind && !isMap) return mismatch(std::string{found});
        open_.push_back({&shape, place(), kind == Kind::record ? noMember : 0});
        return true;
    }

    bool close() {
        if (skippedDepth_ == 0) {
            open_.pop_back();
            return finishValue();
        }
        if (--skippedDepth_ == 0) stopSkipping();
        return true;
    }

    bool hasAllMembers() {
        auto& record = open_.back();
        for (std::size_t index = 0; index < record.shape->members.size(); ++index) {
            const bool isSeen = ((record.seen >> index) & 1U) != 0;
            if (isSeen || !record.shape->members[index].required) continue;
            record.index = index;
            return mismatch("nothing");
        }
        return true;
    }

    bool mismatch(std::string found) { return fail(expectation(wanted()), std::move(found)); }

    bool fail(std::string expected, std::string found) {
        fault_ =
            DecodingFault{path(), std::move(expected), std::move(found), stream_.tokenOffset()};
        return false;
    }

    const TextStream& stream_;
    const Shape& root_;
    void* record_;
    const Limits& limits_;
    const UnreadKeys& unread_;
    std::size_t values_{};
    std::vector<Open> open_{};
    std::size_t skippedDepth_{};               ///< lists and objects open below the skipped key
    std::optional<std::string> skippedKey_{};  ///< an unknown or repeated key, until its value ends
    std::optional<DecodingFault> fault_{};
};

}  // namespace

std::optional<DecodingFault> decode(std::string_view text, const Shape& shape, void* record,
                                    const Limits& limits, const UnreadKeys& unread) {
    const std::size_t parsers = std::numeric_limits<rapidjson::SizeType>::max();
    if (const auto most = std::min(limits.bytes, parsers); text.size() > most)
        return DecodingFault{"", "at most " + std::to_string(most) + " bytes", "more", 0};

    constexpr unsigned rules = rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseIterativeFlag;
    TextStream stream{text};
    Decoder decoder{stream, shape, record, limits, unread};
    rapidjson::Reader reader;
    const auto result = reader.Parse<rules>(stream, decoder);
    if (auto fault = decoder.takeFault()) return fault;

    auto code = result.Code();
    auto offset = result.IsError() ? result.Offset() : stream.Tell();
    if (!result.IsError() && !stream.atEnd()) code = rapidjson::kParseErrorDocumentRootNotSingular;
    if (code == rapidjson::kParseErrorNone) return std::nullopt;
    // Of a word like "nonsense" it takes the letters that "null" begins with.
    if (code == rapidjson::kParseErrorValueInvalid) offset = stream.tokenOffset();
    const bool isControl = offset < text.size() && text[offset] >= 0 && text[offset] < ' ';
    const auto expected = isControl && code == rapidjson::kParseErrorStringEscapeInvalid
                              ? "an escape (\\n, \\t, \\u0000) for a control character"
                              : expectation(code);
    return DecodingFault{decoder.path(), std::string{expected}, wordAt(text, offset), offset};
}

}  // namespace shapes

std::string DecodingFault::message() const {
    return path + (path.empty() ? "expected " : ": expected ") + expected + ", found " + found;
}

}  // namespace tessary::foundation
