// Stands where libFuzzer's main does, so that ordinary tests replay what the fuzzers are fed with:
//
//     card_fuzzer fuzz/corpus/card_fuzzer     # each file of the folder, once
//
// Names each file before its turn; one that breaks a rule ends the process.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator{folder})
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

void replay(const std::filesystem::path& file) {
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    std::ifstream in{file, std::ios::binary};
    const std::string bytes{std::istreambuf_iterator<char>{in}, {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int count, char** words) {
    const auto files = filesOf(count == 2 ? words[1] : "");
    for (const auto& file : files) replay(file);
    if (files.empty()) std::fprintf(stderr, "replay: no files\n");
    return files.empty() ? 1 : 0;
}
