// Content that is made once something about its surroundings is known.
#pragma once

#include <memory>
#include <utility>

namespace tessary::views {

class View;

/// A value and the function that turns it and an argument into a view. Compares: equal when the
/// values are equal and the functions the same. Copies are cheap and share the value, which never
/// changes: a view is copied at each of its modifiers, and the value may be a long series.
///
///     Deferred<Size>(series, [](const Series& s, const Size& size) { return s.chart(size); })
template <class Argument>
class Deferred {
public:
    template <class Value>
    Deferred(Value value, View (*make)(const Value&, const Argument&))
        : maker_(std::make_shared<Maker<Value>>(std::move(value), make)) {}

    View content(const Argument& argument) const;
    friend bool operator==(const Deferred& a, const Deferred& b) {
        return a.maker_->equals(*b.maker_);
    }

private:
    struct Base {
        virtual ~Base() = default;
        virtual View content(const Argument& argument) const = 0;
        virtual bool equals(const Base& other) const = 0;
    };
    template <class Value>
    struct Maker final : Base {
        Maker(Value v, View (*c)(const Value&, const Argument&)) : value(std::move(v)), make(c) {}
        View content(const Argument& argument) const override;
        bool equals(const Base& other) const override {
            const auto* same = dynamic_cast<const Maker*>(&other);
            return same != nullptr && same->make == make && same->value == value;
        }
        Value value;
        View (*make)(const Value&, const Argument&);
    };
    std::shared_ptr<const Base> maker_;
};

}  // namespace tessary::views
