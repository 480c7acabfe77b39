#include "feed/store/store.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <system_error>
#include <utility>

namespace tessary::store {

namespace fs = std::filesystem;
using foundation::Fault;
using foundation::Result;

namespace {

fs::path folderOf(const fs::path& container) {
    return (container / snapshot::pathOf("alarms")).parent_path();
}

/// What a feed left that was killed while it wrote: another process of its number could not put a
/// new file beside the old one.
void tidy(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator at{folder, error}, end; !error && at != end; at.increment(error)) {
        const auto name = at->path().filename().string();
        const auto isOf = [&](std::string_view file) {
            return name.starts_with("." + std::string{file} + ".json.");
        };
        std::error_code ignored;
        if (std::ranges::any_of(snapshot::fileNames, isOf)) fs::remove(at->path(), ignored);
    }
}

}  // namespace

Fault Store::taken(const fs::path& container) {
    return {"another feed writes to " + folderOf(container).string()};
}

Result<Store> Store::open(const fs::path& container, const fs::path& memory) {
    const fs::path folder = folderOf(container);
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) return Fault{"cannot make " + folder.string() + ": " + error.message()};
    system::Descriptor lock{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (lock.number() >= 0 && ::flock(lock.number(), LOCK_EX | LOCK_NB) == 0) {
        tidy(folder);
        return Store{container, memory, std::move(lock)};
    }
    if (errno == EWOULDBLOCK) return taken(container);
    return Fault{"cannot lock " + folder.string() + ": " + std::system_category().message(errno)};
}

Result<void> Store::remember(const Memory& memory) const {
    return system::saveFile(
        memory_, foundation::toJSON(memory, foundation::JSONWriter::Style::indented) + "\n");
}

Memory remembered(const fs::path& memory) {
    const auto text = system::readFile(memory);
    if (!text) return {};
    auto known = foundation::decodeJSON<Memory>(*text);
    return known ? *std::move(known) : Memory{};
}

}  // namespace tessary::store
