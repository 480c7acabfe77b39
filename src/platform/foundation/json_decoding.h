// Strict JSON decoding into records, by the field table that stands below each record.
//
// The record is the schema: a member's type says what the value must be, `std::optional` that the
// key may be missing or null. The same table prints a record (json_writing.h).
//
//     struct Sample {
//         std::int64_t t{};
//         double v{};
//     };
//     template <> inline constexpr auto fieldsOf<Sample> = std::tuple{
//         Field{"t", &Sample::t}, Field{"v", &Sample::v},
//     };
//
//     decodeJSON<Sample>(R"({"t": 3e2, "v": 1.5})").value()    // Sample{300, 1.5}
//     decodeJSON<Sample>(R"({"t": 1.5, "v": 1.5})").fault()
//         // /t: expected a 64-bit integer, found 1.5
//
// Members are std::int64_t, double, bool, std::string, Bytes (a text in base64), records with a
// table of at most 64 fields, std::vector of any of these but bool, std::map from std::string (an
// object whose keys nobody knows before) to any of these, std::optional of any of all these,
// std::variant of std::monostate (as in an optional) and some of the first five, and AnyJSON, whose
// value is checked and passed over. A variant may be a list's or a map's as well; there, null is a
// fault like that of any other type. A key that has to be there for an optional's
// null says so in its row: Field{"pin", &Widget::pin, Key::always}; one that is not to be printed
// where its value is absent has Key::ifPresent there.
//
// Rules: RFC 8259 to the letter, checked for the whole text, unknown keys' values included; UTF-8
// valid, surrogate escapes paired, no byte order mark, nothing but white space after the value,
// nesting at most 512 deep or what the caller's limits allow. Keys match exactly and come in any
// order; of a repeated key the first counts; unknown keys are ignored; whoever asks is told of
// both. A number is an integer when its value is (300.0, 3e2), read exactly; a double takes any
// number that does not overflow, and is zero for one too small for it.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "platform/foundation/base64.h"
#include "platform/foundation/result.h"

namespace tessary::foundation {

/// Whether a key may be missing: as its member's type says; or never, an absent value being null;
/// or as typed, and an absent value is not even printed as null.
enum class Key { asTyped, always, ifPresent };

/// One row of a field table: a JSON key and the member it fills.
template <class Record, class Value>
struct Field {
    std::string_view key{};
    Value Record::*member{};
    Key presence{Key::asTyped};
};
template <class Record, class Value>
Field(const char*, Value Record::*, Key = {}) -> Field<Record, Value>;

class JSONWriter;

/// A value that one side writes, null where nothing does, and that no record is filled with.
struct AnyJSON {
    std::function<void(JSONWriter&)> write{};
};

/// How much of a text is taken; what passes a limit is a fault like any other.
struct Limits {
    std::size_t bytes{std::numeric_limits<std::uint32_t>::max()};  ///< and never more than that
    std::size_t depth{512};
    std::size_t values{std::numeric_limits<std::size_t>::max()};  ///< of any kind, at any depth
};

/// Specialise with a std::tuple of Field, one a member, in file order.
template <class Record>
inline constexpr auto fieldsOf = std::tuple<>{};

/// A type with a field table.
template <class Type>
concept TableRecord = (std::tuple_size_v<std::remove_cvref_t<decltype(fieldsOf<Type>)>> > 0);

/// Why a text did not decode.
struct DecodingFault {
    std::string path{};      ///< JSON pointer of the value at fault; empty for the whole text
    std::string expected{};  ///< what should have stood there: "a 64-bit integer", "true or false"
    std::string found{};   ///< what stood there, shortened to one line: "300.5", "null", "nothing"
    std::size_t offset{};  ///< bytes from the start of the text to where it was noticed

    /// "/pins/2/authExpired: expected true or false, found 0"
    std::string message() const;
    bool operator==(const DecodingFault&) const = default;
};

/// What one compiled decoder needs to know of all types: field tables with the types taken away.
namespace shapes {

enum class Kind { integer, number, flag, text, bytes, list, map, record, choice, any };

struct Shape;

/// A member of a record. `open` makes an optional present and tells where the value goes.
struct Member {
    std::string_view key{};
    const Shape* shape{};
    bool required{};  ///< the key
    bool nullable{};
    void* (*open)(void* record){};
};

/// One of a choice's kinds. `choose` makes the variant hold it and tells where its value goes.
struct Alternative {
    Kind kind{};
    void* (*choose)(void* variant){};
};

/// A map's: its key, as the map keeps it, and where its value goes.
struct Entry {
    std::string_view key{};
    void* value{};
};

/// How a value is filled. A list has an element shape and `append`, a map an element shape and
/// `insert`, which has no answer for a key that is there; a record has its members, a choice its
/// alternatives.
struct Shape {
    Kind kind{};
    std::span<const Member> members{};
    const Shape* element{};
    void* (*append)(void* list){};
    std::span<const Alternative> alternatives{};
    std::optional<Entry> (*insert)(void* map, std::string_view key){};
};

template <class Type>
struct Layers {
    using Value = Type;
    static constexpr bool isOptional = false;
    static constexpr bool isNullable = false;
};
template <class Type>
struct Layers<std::optional<Type>> {
    using Value = Type;
    static constexpr bool isOptional = true;
    static constexpr bool isNullable = true;
};
template <class... Case>
struct Layers<std::variant<std::monostate, Case...>> {
    using Value = std::variant<std::monostate, Case...>;
    static constexpr bool isOptional = false;
    static constexpr bool isNullable = true;
};

template <class Type>
struct Maker;

template <class Type>
inline constexpr Shape shapeOf = Maker<Type>::make();

template <Kind plain>
struct PlainMaker {
    static constexpr Shape make() { return {.kind = plain}; }
};
template <>
struct Maker<std::int64_t> : PlainMaker<Kind::integer> {};
template <>
struct Maker<double> : PlainMaker<Kind::number> {};
template <>
struct Maker<bool> : PlainMaker<Kind::flag> {};
template <>
struct Maker<std::string> : PlainMaker<Kind::text> {};
template <>
struct Maker<Bytes> : PlainMaker<Kind::bytes> {};
template <>
struct Maker<AnyJSON> : PlainMaker<Kind::any> {};

template <class... Case>
struct Maker<std::variant<std::monostate, Case...>> {
    using Variant = std::variant<std::monostate, Case...>;
    static_assert(((shapeOf<Case>.kind <= Kind::bytes) && ...), "a choice is between plain values");

    template <class Chosen>
    static void* choose(void* variant) {
        return &static_cast<Variant*>(variant)->template emplace<Chosen>();
    }
    static constexpr std::array alternatives{Alternative{shapeOf<Case>.kind, &choose<Case>}...};

    static constexpr Shape make() { return {.kind = Kind::choice, .alternatives = alternatives}; }
};

template <class Element>
struct Maker<std::vector<Element>> {
    static_assert(!Layers<Element>::isOptional && !std::same_as<Element, bool> &&
                      !std::same_as<Element, AnyJSON>,
                  "the elements of a list cannot be optional, flags or of any kind");
    static void* append(void* list) {
        return &static_cast<std::vector<Element>*>(list)->emplace_back();
    }
    static constexpr Shape make() {
        return {.kind = Kind::list, .element = &shapeOf<Element>, .append = &append};
    }
};

template <class Element>
struct Maker<std::map<std::string, Element>> {
    static_assert(!Layers<Element>::isOptional && !std::same_as<Element, AnyJSON>,
                  "the values of a map cannot be optional or of any kind");
    static std::optional<Entry> insert(void* map, std::string_view key) {
        auto& values = *static_cast<std::map<std::string, Element>*>(map);
        const auto [place, isNew] = values.try_emplace(std::string{key});
        return isNew ? std::optional{Entry{place->first, &place->second}} : std::nullopt;
    }
    static constexpr Shape make() {
        return {.kind = Kind::map, .element = &shapeOf<Element>, .insert = &insert};
    }
};

template <class Record>
struct Maker {
    static_assert(TableRecord<Record>, "the type has no field table");
    static constexpr std::size_t count = std::tuple_size_v<decltype(fieldsOf<Record>)>;
    static_assert(count <= 64, "a record has at most 64 fields");

    template <std::size_t index>
    using Member = std::remove_reference_t<decltype(std::declval<Record&>().*
                                                    std::get<index>(fieldsOf<Record>).member)>;

    template <std::size_t index>
    static void* open(void* record) {
        auto& member = static_cast<Record*>(record)->*std::get<index>(fieldsOf<Record>).member;
        if constexpr (Layers<Member<index>>::isOptional) return &member.emplace();
        if constexpr (requires { member.clear(); }) member.clear();  // what it holds by default
        return &member;
    }

    template <std::size_t... index>
    static constexpr std::array<shapes::Member, count> list(std::index_sequence<index...>) {
        return {shapes::Member{
            .key = std::get<index>(fieldsOf<Record>).key,
            .shape = &shapeOf<typename Layers<Member<index>>::Value>,
            .required = std::get<index>(fieldsOf<Record>).presence == Key::always ||
                        !Layers<Member<index>>::isNullable,
            .nullable = Layers<Member<index>>::isNullable,
            .open = &open<index>,
        }...};
    }
    static constexpr auto members = list(std::make_index_sequence<count>{});

    static constexpr Shape make() { return {.kind = Kind::record, .members = members}; }
};

}  // namespace shapes

/// A key that fills nothing: no member has it, or an earlier one of its object was the same.
struct UnreadKey {
    std::string_view key{};
    std::size_t offset{};  ///< bytes from the start of the text to its quotation mark
    bool isRepeated{};
    std::span<const shapes::Member> members{};  ///< those that there are
};
/// Is told of each on the way, in the text's order, as far as the decoding comes.
using UnreadKeys = std::function<void(const UnreadKey&)>;

namespace shapes {

/// Fills `record`, which must be of the type that `shape` describes; on a fault it is left half
/// filled.
std::optional<DecodingFault> decode(std::string_view text, const Shape& shape, void* record,
                                    const Limits& limits, const UnreadKeys& unread);

}  // namespace shapes

/// Fills a record from a whole text. What was read before a fault stays in it.
template <TableRecord Record>
std::optional<DecodingFault> fillFromJSON(Record& record, std::string_view text,
                                          const Limits& limits = {},
                                          const UnreadKeys& unread = {}) {
    return shapes::decode(text, shapes::shapeOf<Record>, &record, limits, unread);
}

/// Decodes one record from a whole text. Bad input never throws and never recurses. Beside the
/// record itself it takes memory for the longest text value.
template <TableRecord Record>
Result<Record, DecodingFault> decodeJSON(std::string_view text, const Limits& limits = {},
                                         const UnreadKeys& unread = {}) {
    Record record{};
    if (auto fault = fillFromJSON(record, text, limits, unread)) return *std::move(fault);
    return record;
}

}  // namespace tessary::foundation
