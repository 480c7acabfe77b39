// What the process stands in: the clock, the information dictionary, the containers, the
// files, the locale.
//
// A host sets them once, before its first request; providers, the snapshot store and locale texts
// read them. Views and display states read none of it.
//
//     const ScopedSurroundings fixed{{.clock = [] { return Date{1731772840}; }}};
//     surroundings().clock()                                   // Date{1731772840}
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/date.h"
#include "platform/locale/user_locale.h"
#include "platform/system/files.h"
#include "platform/system/group_containers.h"

namespace tessary::system {

/// All functions are called from any thread, several at a time.
struct Surroundings {
    foundation::Clock clock{foundation::wallClock};
    /// The text under a key of the main bundle's information dictionary; none where it has none.
    std::function<std::optional<std::string>(std::string_view key)> information{
        [](std::string_view) { return std::nullopt; }};
    /// The folder that a group shares; none where there is none.
    std::function<std::optional<std::filesystem::path>(std::string_view group)> container{
        groupContainer};
    /// What a file holds, as `readFile` tells it; all files of requests are read by it.
    std::function<FileContents(const std::filesystem::path&)> read{
        [](const std::filesystem::path& file) { return readFile(file); }};
    locale::UserLocale locale{};
};

/// Those in force. Never changed while a request runs.
const Surroundings& surroundings();

/// Puts surroundings in force until it goes, then the former ones again.
class ScopedSurroundings {
public:
    explicit ScopedSurroundings(Surroundings surroundings);
    ~ScopedSurroundings();
    ScopedSurroundings(const ScopedSurroundings&) = delete;
    ScopedSurroundings& operator=(const ScopedSurroundings&) = delete;

private:
    Surroundings former_;
};

}  // namespace tessary::system
