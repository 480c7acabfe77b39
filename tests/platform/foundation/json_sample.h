// Records with a member of every kind, for the tests of decoding and of printing.
#pragma once

#include "platform/foundation/json_decoding.h"

namespace tessary::foundation {

struct Inner {
    std::int64_t t{};
    double v{};
    bool operator==(const Inner&) const = default;
};
template <>
inline constexpr auto fieldsOf<Inner> = std::tuple{Field{"t", &Inner::t}, Field{"v", &Inner::v}};

struct Outer {
    std::int64_t count{};
    bool flag{};
    std::string name{};
    std::vector<Inner> list{};
    std::optional<std::int64_t> when{};
    std::optional<Inner> last{};
    std::optional<std::vector<std::string>> tags{};
    bool operator==(const Outer&) const = default;
};
template <>
inline constexpr auto fieldsOf<Outer> = std::tuple{
    Field{"count", &Outer::count}, Field{"flag", &Outer::flag}, Field{"name", &Outer::name},
    Field{"list", &Outer::list},   Field{"when", &Outer::when}, Field{"last", &Outer::last},
    Field{"a/b~c", &Outer::tags}};

}  // namespace tessary::foundation
