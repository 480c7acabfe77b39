#include "platform/system/surroundings.h"

#include <utility>

namespace tessary::system {

namespace {

Surroundings& current() {
    static Surroundings value;
    return value;
}

}  // namespace

const Surroundings& surroundings() { return current(); }

ScopedSurroundings::ScopedSurroundings(Surroundings surroundings)
    : former_(std::exchange(current(), std::move(surroundings))) {}

ScopedSurroundings::~ScopedSurroundings() { current() = std::move(former_); }

}  // namespace tessary::system
