// Any bytes as the information dictionary: none makes the library behind it fall over, and what is
// read is the same each time. Then the bytes as a value: a text that is written in either form
// comes back.
#include <string>

#include "fuzzer.h"
#include "memory_file.h"
#include "platform/foundation/utf8.h"
#include "platform/system/information_dictionary.h"

namespace tessary::fuzz {
namespace {

using system::InformationDictionary;

const std::string group = "TessaryAppGroup";

std::optional<std::string> textIn(std::string_view bytes, std::string_view key) {
    const MemoryFile file{bytes};
    return InformationDictionary{file.path()}.text(key);
}

void checkFile(std::string_view bytes) {
    using namespace std::string_view_literals;
    const MemoryFile file{bytes};
    const InformationDictionary dictionary{file.path()};
    for (const auto key : {std::string_view{group}, "a"sv, ""sv}) {
        const auto text = dictionary.text(key);
        require(text == dictionary.text(key), "a file reads the same each time");
        require(!text || text->size() <= bytes.size() * 3, "a value is no longer than its file");
    }
    require(!dictionary.text("a\0b"sv), "a key with NUL in it names nothing");
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (character == '<')
            result += "&lt;";
        else if (character == '>')
            result += "&gt;";
        else if (character == '&')
            result += "&amp;";
        else
            result += character;
    }
    return result;
}

std::string asXML(std::string_view text) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict><key>" + group +
           "</key><string>" + escaped(text) + "</string></dict></plist>";
}

/// The four lower bytes, the first one highest.
std::string bigEndian(std::size_t number) {
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) bytes += static_cast<char>(number >> shift);
    return bytes;
}

/// One dictionary of one key; `text` is ASCII.
std::string asBinary(std::string_view text) {
    const std::string count{"\x5F\x12", 2};
    const std::string entry{"\xD1\1\2", 3};
    const std::string key = count + bigEndian(group.size()) + group;
    const std::string value = count + bigEndian(text.size()) + std::string{text};
    const std::size_t first = 8 + entry.size();
    const std::size_t second = first + key.size();
    const std::string table = bigEndian(8) + bigEndian(first) + bigEndian(second);
    const std::string nothing(4, '\0');
    const std::string trailer = nothing + std::string{"\0\0\4\1", 4} + nothing + bigEndian(3) +
                                nothing + nothing + nothing + bigEndian(second + value.size());
    return "bplist00" + entry + key + value + table + trailer;
}

}  // namespace

void fuzz(std::string_view bytes) {
    checkFile(bytes);
    const auto isPlain = [](char character) { return character > 0; };
    const bool isASCII = std::all_of(bytes.begin(), bytes.end(), isPlain);
    if (isASCII) require(textIn(asBinary(bytes), group) == bytes, "a binary text comes back");
    const bool isText = foundation::isUTF8(bytes) && bytes.find('\0') == bytes.npos;
    if (isText) require(textIn(asXML(bytes), group) == bytes, "an XML text comes back");
}

}  // namespace tessary::fuzz
