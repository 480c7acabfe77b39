// Owning a value of a type that is not complete yet, as if it were a member.
#pragma once

#include <memory>
#include <utility>

namespace tessary::views {

/// One value on the heap, copied with its owner and compared by what it holds. A moved-from box may
/// only be assigned to or destroyed.
template <class Value>
class Box {
public:
    Box(Value value) : value_(std::make_unique<Value>(std::move(value))) {}
    Box(const Box& other) : value_(std::make_unique<Value>(*other.value_)) {}
    Box(Box&&) noexcept = default;
    Box& operator=(const Box& other) {
        if (this != &other) value_ = std::make_unique<Value>(*other.value_);
        return *this;
    }
    Box& operator=(Box&&) noexcept = default;
    ~Box() = default;

    const Value& operator*() const { return *value_; }
    const Value* operator->() const { return value_.get(); }
    Value take() && { return std::move(*value_); }

    // Written out: clang 14 crashes on a defaulted one where Value holds boxes of itself.
    friend bool operator==(const Box& a, const Box& b) { return *a == *b; }

private:
    std::unique_ptr<Value> value_;
};

}  // namespace tessary::views
