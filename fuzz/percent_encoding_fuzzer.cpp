// Any bytes as part of a URL: only what may stand there, and nothing lost.
#include "fuzzer.h"
#include "percent_decoding.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/utf8.h"

namespace tessary::fuzz {

void fuzz(std::string_view bytes) {
    const std::string encoded = foundation::percentEncoded(bytes);
    require(percentDecoded(encoded) == bytes, "what was encoded decodes", encoded);
    require(encoded.size() >= bytes.size() && encoded.size() <= 3 * bytes.size(),
            "a byte becomes one character or three", encoded);
    require(foundation::percentDecoded(encoded) ==
                (foundation::isUTF8(bytes) ? std::optional<std::string>{bytes} : std::nullopt),
            "what was encoded decodes where it is text", encoded);
    if (const auto text = foundation::percentDecoded(bytes))
        require(foundation::isUTF8(*text) && text->size() <= bytes.size(),
                "what is decoded is text", *text);
    // A byte means the same wherever it stands.
    const std::size_t middle = bytes.size() / 2;
    require(foundation::percentEncoded(bytes.substr(0, middle)) +
                    foundation::percentEncoded(bytes.substr(middle)) ==
                encoded,
            "halves encode as the whole does", encoded);
}

}  // namespace tessary::fuzz
