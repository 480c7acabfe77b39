// The one way to fail: a value, or why there is none.
//
//     Result<Date> parsed(std::string_view text) {
//         if (auto date = Date::parse(text)) return *date;
//         return Fault{"'" + std::string{text} + "' is not a time"};
//     }
//     parsed("180").value()                                 // Date{180}
//     parsed("noon").fault().message()                      // "'noon' is not a time"
//     parsed("180").transform([](Date date) { return date.seconds; }).value()         // 180.0
//
// Whoever has to tell more than words brings a reason of his own, with a message() to print it.
// What only is there or is not stays std::optional: nothing is wrong with it.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tessary::foundation {

/// Why something could not be done, in words for the person who asked for it.
struct Fault {
    std::string words{};

    const std::string& message() const { return words; }
    bool operator==(const Fault&) const = default;
};

/// A value or a fault. Asking for the one that is not there throws std::bad_variant_access.
template <class Value, class Reason = Fault>
class [[nodiscard]] Result {
public:
    Result(Value value) : held_(std::in_place_index<0>, std::move(value)) {}
    Result(Reason reason) : held_(std::in_place_index<1>, std::move(reason)) {}

    explicit operator bool() const { return held_.index() == 0; }
    const Value& value() const& { return std::get<0>(held_); }
    Value& value() & { return std::get<0>(held_); }
    Value&& value() && { return std::get<0>(std::move(held_)); }
    const Value& operator*() const& { return value(); }
    Value& operator*() & { return value(); }
    Value&& operator*() && { return std::move(*this).value(); }
    const Value* operator->() const { return &value(); }
    Value* operator->() { return &value(); }
    const Reason& fault() const { return std::get<1>(held_); }

    /// What `next` makes of the value, which may fail as well; the first fault is the one that
    /// stays.
    template <class Next>
    auto andThen(const Next& next) && -> decltype(next(std::declval<Value&&>())) {
        if (!*this) return fault();
        return next(std::move(*this).value());
    }
    /// The same for a `next` that cannot fail.
    template <class Next>
    auto transform(const Next& next) && -> Result<decltype(next(std::declval<Value&&>())), Reason> {
        if (!*this) return fault();
        return next(std::move(*this).value());
    }
    bool operator==(const Result&) const = default;

private:
    std::variant<Value, Reason> held_;
};

/// Done, or why not.
///
///     Result<void> saved = save(file);
///     if (!saved) complain(saved.fault().message());
template <class Reason>
class [[nodiscard]] Result<void, Reason> {
public:
    Result() = default;
    Result(Reason reason) : fault_(std::move(reason)) {}

    explicit operator bool() const { return !fault_; }
    const Reason& fault() const { return fault_.value(); }
    /// What is to be done once this is done.
    template <class Next>
    auto andThen(const Next& next) const -> decltype(next()) {
        if (fault_) return *fault_;
        return next();
    }
    bool operator==(const Result&) const = default;

private:
    std::optional<Reason> fault_{};
};

}  // namespace tessary::foundation
