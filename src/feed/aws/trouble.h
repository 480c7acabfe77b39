// What an answer that is none means: who has to do what about it.
//
//     troubleOf({.status = 400, .type = "com.amazonaws#ExpiredTokenException"}).kind
//         // Trouble::Kind::tokenExpired
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/json_decoding.h"
#include "platform/foundation/named_cases.h"

namespace tessary::aws {

/// What a refused call says of itself, in the spellings of both protocols.
struct Refusal {
    int status{};        ///< of HTTP; 0 where nothing was answered
    std::string type{};  ///< the name of the fault
    std::string message{};
    bool operator==(const Refusal&) const = default;
};

struct Trouble {
    enum class Kind {
        tokenExpired,  ///< fetch the keys anew, once; then the sign-in has expired
        unknownKeys,   ///< nobody knows the keys here: expired where that holds everywhere
        mayNot,        ///< signed in, without the right to ask that
        wrongClock,    ///< this machine's
        passing,       ///< try again
        lasting        ///< it will be the same the next time
    };
    Kind kind{};
    std::string words{};  ///< for a person, one line
    bool operator==(const Trouble&) const = default;
};

/// The refusal of an answer that was not 200; its body need not be what it should.
Refusal refusalOf(int status, std::string_view body);

/// Of a refusal.
Trouble troubleOf(const Refusal& refusal);

/// What a person is told of an action that was refused in a region, where the keys are taken
/// elsewhere.
std::string toldOf(const Trouble& trouble, const std::string& action, const std::string& region);

}  // namespace tessary::aws

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::aws::Trouble::Kind> =
    tessary::foundation::NamedCases<tessary::aws::Trouble::Kind, 6>{{
        {tessary::aws::Trouble::Kind::tokenExpired, "tokenExpired"},
        {tessary::aws::Trouble::Kind::unknownKeys, "unknownKeys"},
        {tessary::aws::Trouble::Kind::mayNot, "mayNot"},
        {tessary::aws::Trouble::Kind::wrongClock, "wrongClock"},
        {tessary::aws::Trouble::Kind::passing, "passing"},
        {tessary::aws::Trouble::Kind::lasting, "lasting"},
    }};
