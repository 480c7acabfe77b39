// A file that lies in memory alone and goes with the process, however that ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

#include "fuzzer.h"

namespace tessary::fuzz {

class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes) : number_(::memfd_create("fuzz", MFD_CLOEXEC)) {
        const bool written = number_ >= 0 && ::write(number_, bytes.data(), bytes.size()) ==
                                                 static_cast<ssize_t>(bytes.size());
        require(written, "the machine has room for a file in memory");
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(number_); }

    std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(number_); }

private:
    int number_{};
};

}  // namespace tessary::fuzz
