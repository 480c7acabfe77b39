// Phase 1 of layout (see layout.h): what a parent offers a child. It travels down.
#pragma once

#include <limits>

namespace tessary::views {

/// An offer in one dimension: a number of points (0 asks for the minimum, unbounded for the
/// maximum) or nothing in particular, which asks for the ideal.
///
///     Offer::points(118).orIdeal(40)        // 118
///     Offer::unspecified().orIdeal(40)      // 40
///     Offer::points(-3) == Offer::zero()
class Offer {
public:
    static constexpr Offer unspecified() { return Offer{-1}; }
    static constexpr Offer zero() { return Offer{0}; }
    static constexpr Offer unbounded() { return Offer{std::numeric_limits<double>::infinity()}; }
    /// A length that came out negative, or as no number, is an offer of zero.
    static constexpr Offer points(double length) { return Offer{length > 0 ? length : 0}; }

    constexpr bool isUnspecified() const { return length_ < 0; }
    constexpr bool isUnbounded() const { return length_ == unbounded().length_; }
    constexpr double orIdeal(double ideal) const { return isUnspecified() ? ideal : length_; }

    /// The offer that is left for a child with `taken` points less; unspecified stays so.
    constexpr Offer less(double taken) const {
        return isUnspecified() ? *this : points(length_ - taken);
    }
    bool operator==(const Offer&) const = default;

private:
    explicit constexpr Offer(double length) : length_(length) {}
    double length_;
};

struct Proposal {
    Offer width{Offer::unspecified()};
    Offer height{Offer::unspecified()};

    static constexpr Proposal points(double width, double height) {
        return {Offer::points(width), Offer::points(height)};
    }
    bool operator==(const Proposal&) const = default;
};

}  // namespace tessary::views
