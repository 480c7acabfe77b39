// Owning the objects of C libraries.
#pragma once

#include <memory>

namespace tessary::drawing {

/// Gives an object back by the library's own function for it.
template <auto release>
struct Release {
    template <class Object>
    void operator()(Object* object) const {
        release(object);
    }
};

/// An object of a C library, given back by `release` when its owner goes.
///
///     Owned<cairo_t, cairo_destroy> context{cairo_create(surface)};
template <class Object, auto release>
using Owned = std::unique_ptr<Object, Release<release>>;

}  // namespace tessary::drawing
