// What signs a call.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessary::aws {

struct Keys {
    std::string id{};
    std::string secret{};
    std::string token{};                   ///< of a session; empty for keys that last
    std::optional<std::int64_t> endsMs{};  ///< when they are to be fetched anew, since 1970
    bool operator==(const Keys&) const = default;
};

}  // namespace tessary::aws
