// Printing JSON: a writer for any document, and records by their field tables.
//
//     JSONWriter json;
//     json.object([&] { json.member("t", 300).member("v", 1.5); });
//     json.text()                                         // {"t":300,"v":1.5}
//
//     toJSON(Sample{300, 1.5})                            // the same, from Sample's table
//
// A type that prints in a way of its own brings a function beside it, which the writer finds:
//
//     void writeJSON(JSONWriter& json, const Display& display) {
//         json.object([&] { json.member("case", "watching").members(display.watching); });
//     }
//     toJSON(display)                                     // {"case":"watching","firing":2,...}
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "platform/foundation/date.h"
#include "platform/foundation/json_decoding.h"
#include "platform/foundation/named_cases.h"
#include "platform/foundation/numbers.h"

namespace tessary::foundation {

class JSONWriter;

/// A type that brings its own `writeJSON(JSONWriter&, const Type&)`, in its own namespace. The
/// function writes exactly one value.
template <class Type>
concept PrintsItself = std::is_class_v<Type> && requires(JSONWriter& json, const Type& value) {
    writeJSON(json, value);
};

/// Builds one document from front to back. Numbers are plain: as few digits after the point as read
/// back as the same double, whole numbers in full, an exponent only from 1e21 on and below 1e-6; a
/// double that is no number becomes null. Texts are UTF-8; each byte that is not becomes U+FFFD.
///
/// The calls must make a document: in an object each value after a key, elsewhere no key, one value
/// at the top. That is not checked.
class JSONWriter {
public:
    /// All on one line without spaces; or one member or element a line, indented by two spaces.
    enum class Style { compact, indented };

    /// Is handed the text from time to time, so that a long one is never held as a whole.
    using Sink = std::function<void(std::string)>;

    explicit JSONWriter(Style style = Style::compact, Sink sink = {})
        : style_(style), sink_(std::move(sink)) {}

    /// An object, whose members `body()` writes.
    template <std::invocable Body>
    JSONWriter& object(Body&& body) {
        return nested('{', '}', body);
    }
    /// An array, whose elements `body()` writes.
    template <std::invocable Body>
    JSONWriter& array(Body&& body) {
        return nested('[', ']', body);
    }

    JSONWriter& null();
    JSONWriter& key(std::string_view key);

    /// Flags, integers, doubles, Dates (as seconds), texts, Bytes (in base64), named cases (by
    /// name), optionals and pointers (absent: null), vectors, maps from texts, variants (the value
    /// they hold; std::monostate is null), records with a field table, AnyJSON, and types that
    /// print themselves.
    template <class Value>
    JSONWriter& value(const Value& value);

    template <class Value>
    JSONWriter& member(std::string_view name, const Value& memberValue) {
        return key(name).value(memberValue);
    }

    /// The members of a record with a field table, into the object that is open.
    template <TableRecord Record>
    JSONWriter& members(const Record& record) {
        std::apply([&](const auto&... field) { (row(field, record.*field.member), ...); },
                   fieldsOf<Record>);
        return *this;
    }

    /// All of it, or what no sink has been handed yet.
    const std::string& text() const& { return text_; }
    std::string text() && { return std::move(text_); }

private:
    template <class Row, class Value>
    void row(const Row& field, const Value& value) {
        if constexpr (shapes::Layers<Value>::isOptional)
            if (field.presence == Key::ifPresent && !value) return;
        member(field.key, value);
    }
    template <class Body>
    JSONWriter& nested(char opening, char closing, Body& body) {
        begin(opening);
        body();
        return end(closing);
    }
    void begin(char opening);
    JSONWriter& end(char closing);
    /// Writes what belongs between the value before and the one that follows.
    void separate();
    void startLine();
    JSONWriter& word(std::string_view word);
    JSONWriter& number(double number);
    JSONWriter& quoted(std::string_view text);
    JSONWriter& quoted(const Bytes& bytes);

    Style style_{};
    Sink sink_{};
    std::string text_{};
    std::size_t depth_{};
    bool isFirst_{true};  ///< nothing stands in the innermost object or array yet
    bool isAfterKey_{};
};

template <class Type>
inline constexpr bool isVector = false;
template <class Element>
inline constexpr bool isVector<std::vector<Element>> = true;
template <class Type>
inline constexpr bool isMap = false;
template <class Element>
inline constexpr bool isMap<std::map<std::string, Element>> = true;
template <class Type>
inline constexpr bool isVariant = false;
template <class... Case>
inline constexpr bool isVariant<std::variant<Case...>> = true;

template <class Value>
JSONWriter& JSONWriter::value(const Value& value) {
    if constexpr (PrintsItself<Value>)
        writeJSON(*this, value);
    else if constexpr (std::same_as<Value, std::monostate>)
        null();
    else if constexpr (std::same_as<Value, bool>)
        word(value ? "true" : "false");
    else if constexpr (std::integral<Value>)
        word(digits(value));
    else if constexpr (std::floating_point<Value>)
        number(value);
    else if constexpr (std::same_as<Value, Date>)
        number(value.seconds);
    else if constexpr (std::convertible_to<const Value&, std::string_view> ||
                       std::same_as<Value, Bytes>)
        quoted(value);
    else if constexpr (std::same_as<Value, AnyJSON>)
        value.write ? value.write(*this) : void(null());
    else if constexpr (NamedEnumeration<Value>)
        quoted(name(value));
    else if constexpr (isVector<Value>)
        array([&] {
            for (const auto& each : value) this->value(each);
        });
    else if constexpr (isMap<Value>)
        object([&] {
            for (const auto& [key, each] : value) member(key, each);
        });
    else if constexpr (isVariant<Value>)
        std::visit([&](const auto& held) { this->value(held); }, value);
    else if constexpr (TableRecord<Value>)
        object([&] { members(value); });
    else
        value ? this->value(*value) : null();
    return *this;
}

/// One value as a document; with a sink, what is left of it in the end.
template <class Value>
std::string toJSON(const Value& value, JSONWriter::Style style = JSONWriter::Style::compact,
                   JSONWriter::Sink sink = {}) {
    JSONWriter json{style, std::move(sink)};
    json.value(value);
    return std::move(json).text();
}

}  // namespace tessary::foundation
