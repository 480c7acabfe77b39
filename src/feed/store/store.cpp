#include "feed/store/store.h"

#include <cerrno>
#include <fcntl.h>
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
    if (lock.number() >= 0 && ::flock(lock.number(), LOCK_EX | LOCK_NB) == 0)
        return Store{container, memory, std::move(lock)};
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
