// Texts compared with stored ones, in the folder "goldens" beside the test.
#pragma once

#include <gtest/gtest.h>
#include <sstream>

#include "support/fixtures.h"

namespace tessary {

/// "\\x1B" is the byte of that number.
inline std::string unescaped(std::string text) {
    for (auto at = text.find("\\x"); at != text.npos; at = text.find("\\x", at + 1))
        text.replace(at, 4, 1, static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
    return text;
}

inline std::filesystem::path storedGolden(const std::string& name, const char* test) {
    return std::filesystem::path{test}.parent_path() / "goldens" / name;
}

/// Fails where the text differs, or nothing is stored, and says how to accept what was received.
inline void expectGolden(const std::string& name, const std::string& received,
                         const char* test = __builtin_FILE()) {
    const auto stored = storedGolden(name, test);
    if (std::filesystem::exists(stored) && contents(stored) == received) return;
    const auto written = std::filesystem::temp_directory_path() / ("received-" + name);
    std::ofstream{written, std::ios::binary} << received;
    ADD_FAILURE() << "differs from what is stored; to look and to accept it:\n  diff " << stored
                  << " " << written << "\n  cp " << written << " " << stored;
}

/// For a stored file that holds its own cases: lines that begin with "$ ", and below each what
/// `answer` gives for the rest of it. "#" begins a remark.
template <class Answer>
void expectTranscript(const std::string& name, const Answer& answer,
                      const char* test = __builtin_FILE()) {
    std::istringstream stored{contents(storedGolden(name, test))};
    std::string received;
    int cases = 0;
    for (std::string line; std::getline(stored, line);) {
        if (line.starts_with('#')) received += line + '\n';
        if (!line.starts_with("$ ")) continue;
        received += line + '\n' + answer(line.substr(2));
        if (!received.ends_with('\n')) received += '\n';
        ++cases;
    }
    EXPECT_GT(cases, 0) << name << " holds no cases";
    expectGolden(name, received, test);
}

}  // namespace tessary
