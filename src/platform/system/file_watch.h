// Waiting until files change, without looking at them again and again.
//
//     heedEndSignals();
//     for (;;) {
//         FileWatch watch{files};      // before looking: what changes meanwhile is not missed
//         look(files);
//         if (watch.wait() != Woken::change) break;
//     }
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/system/files.h"

namespace tessary::system {

/// From now on the first SIGINT or SIGTERM asks for the end instead of ending the process; a second
/// one ends it.
void heedEndSignals();

enum class Woken {
    change,      ///< a file, or a folder or link on the way to one, has changed
    end,         ///< a signal asked for the end
    readerGone,  ///< nobody reads standard output any more
};

/// Sees whatever makes a path mean something else: its file written, replaced, removed or made
/// readable, a folder above it made, moved or removed, a link on the way set anew. Nothing on the
/// way need exist.
class FileWatch {
public:
    /// Throws std::runtime_error where the system has no watch to give or a folder forbids it.
    explicit FileWatch(const std::vector<std::filesystem::path>& files);

    /// Waits for the first change, and a twentieth of a second more for those that come with it.
    /// Throws std::runtime_error where waiting fails.
    Woken wait();

private:
    void follow(const std::filesystem::path& file);
    void watch(const std::filesystem::path& folder, const std::filesystem::path& name);
    bool takeEvents();

    system::Descriptor queue_{};
    std::map<int, std::set<std::string>> names_{};  ///< by watched folder: what matters in it
    /// The folder, while a path is followed, that hides its names.
    std::filesystem::path unseen_{};
};

}  // namespace tessary::system
