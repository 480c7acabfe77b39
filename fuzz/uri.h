// Whether a text is a URI by RFC 3986, as far as links need it: a scheme, an authority that is a
// name, a path, a query.
#pragma once

#include <string_view>

#include "percent_decoding.h"

namespace tessary::fuzz {

/// Reads a text from the front.
class URIReader {
public:
    explicit URIReader(std::string_view text) : rest_(text) {}

    bool isURI() {
        if (!takeScheme() || !take("://") || !takeAll(subDelimiters)) return false;
        while (take("/"))
            if (!takeAll(pathCharacters)) return false;
        if (take("?") && !takeAll(queryCharacters)) return false;
        return rest_.empty();
    }

private:
    static constexpr std::string_view subDelimiters = "!$&'()*+,;=";
    static constexpr std::string_view pathCharacters = "!$&'()*+,;=:@";
    static constexpr std::string_view queryCharacters = "!$&'()*+,;=:@/?";

    bool take(std::string_view word) {
        if (!rest_.starts_with(word)) return false;
        rest_.remove_prefix(word.size());
        return true;
    }
    bool takeScheme() {
        const std::size_t end = rest_.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-.");
        const bool startsWell = !rest_.empty() && rest_[0] >= 'a' && rest_[0] <= 'z';
        if (end == rest_.npos || !startsWell) return false;
        rest_.remove_prefix(end);
        return true;
    }
    /// As many unreserved, percent-encoded and `further` characters as there are; false where a
    /// percent sign does not stand before two digits.
    bool takeAll(std::string_view further) {
        while (!rest_.empty()) {
            const bool isEncoded = rest_[0] == '%';
            if (isEncoded && !startsWithEncodedByte()) return false;
            if (!isEncoded && !isUnreserved(rest_[0]) && further.find(rest_[0]) == further.npos)
                break;
            rest_.remove_prefix(isEncoded ? 3 : 1);
        }
        return true;
    }
    bool startsWithEncodedByte() const {
        return rest_.size() >= 3 && digitValue(rest_[1]) >= 0 && digitValue(rest_[2]) >= 0;
    }

    std::string_view rest_;
};

inline bool isURI(std::string_view text) { return URIReader{text}.isURI(); }

}  // namespace tessary::fuzz
