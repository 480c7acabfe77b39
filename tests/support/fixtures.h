// What the tests of this room share.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tessary {

/// The words between blanks, for tables of many cases to a line: words("a b") is {"a", "b"}.
inline std::vector<std::string> words(const std::string& text) {
    std::istringstream in{text};
    return {std::istream_iterator<std::string>{in}, {}};
}

/// Words that hold a case and its result: pairs("a=b") is {{"a", "b"}}.
inline std::vector<std::pair<std::string, std::string>> pairs(const std::string& text) {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& word : words(text))
        pairs.emplace_back(word.substr(0, word.find('=')), word.substr(word.find('=') + 1));
    return pairs;
}

inline std::string contents(const std::filesystem::path& file) {
    std::ifstream in{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
}

/// In every place.
inline std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (auto at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// "-" takes the variable out of the environment.
inline void setVariable(const char* name, const std::string& value) {
    value == "-" ? ::unsetenv(name) : ::setenv(name, value.c_str(), 1);
}

/// A folder of a test's own that goes when the test does.
class TemporaryFolder {
public:
    TemporaryFolder() : path_(std::filesystem::temp_directory_path() / "tessary-XXXXXX") {
        path_ = ::mkdtemp(path_.string().data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    std::filesystem::path write(const std::string& name, const std::string& bytes) const {
        std::ofstream{path_ / name, std::ios::binary} << bytes;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

}  // namespace tessary
