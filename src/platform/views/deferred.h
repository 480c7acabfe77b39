// Content that is made once something about its surroundings is known.
#pragma once

#include <memory>
#include <utility>

namespace tessary::views {

class View;

/// A record with `View body(const Argument&) const`, which waits for the argument. Compares as its
/// record does. Copies are cheap and share the record, which never changes: a view is copied at
/// each of its modifiers, and the record may hold a long series.
///
///     Deferred<Size>{Sparkline{series}}.content({100, 50})     // the chart in that room
template <class Argument>
class Deferred {
public:
    template <class Record>
    explicit Deferred(Record record) : held_(std::make_shared<Held<Record>>(std::move(record))) {}

    View content(const Argument& argument) const;
    friend bool operator==(const Deferred& a, const Deferred& b) {
        return a.held_->equals(*b.held_);
    }

private:
    struct Base {
        virtual ~Base() = default;
        virtual View content(const Argument& argument) const = 0;
        virtual bool equals(const Base& other) const = 0;
    };
    template <class Record>
    struct Held final : Base {
        explicit Held(Record r) : record(std::move(r)) {}
        View content(const Argument& argument) const override;
        bool equals(const Base& other) const override {
            const auto* same = dynamic_cast<const Held*>(&other);
            return same != nullptr && same->record == record;
        }
        Record record;
    };
    std::shared_ptr<const Base> held_;
};

}  // namespace tessary::views
