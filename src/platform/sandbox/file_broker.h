// A process beside a sandboxed one that reads files for it.
//
// What a sandbox lets a process open is fixed when it is entered, by the folders that stand there
// at that time. A container that is made, removed or replaced later needs somebody outside who
// looks its path up anew: the broker, a small process that knows which paths it may open, parses
// nothing but those, and hands over what is in the files. No open file goes either way.
//
//     FileBroker broker{[](const std::filesystem::path& path) { return path == "/data/a.json"; }};
//     enterSandbox({.readable = {{}}});                 // no path can be opened from here on
//     broker.read("/data/a.json")                       // its bytes
//     broker.read("/etc/passwd")                        // Fault{"Operation not permitted"}
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "platform/system/files.h"

namespace tessary::sandbox {

class FileBroker {
public:
    /// Starts the process, which gives up what it can, too, and ends with the one that started it.
    /// One that is silent for longer than `patience` counts as gone. Call it before the first
    /// thread starts. Throws std::system_error where no process can be started.
    explicit FileBroker(const std::function<bool(const std::filesystem::path&)>& mayOpen,
                        std::chrono::milliseconds patience = std::chrono::seconds{5});

    /// Reads as `system::readFile` does a file that the broker may open; for another, and when
    /// the broker is gone, a fault. From any thread.
    system::FileContents read(const std::filesystem::path& path);

    /// Whether the process has ended or stopped, as far as reading has met it. No file can be read
    /// from then on, which is not to be taken for files that are gone.
    bool isGone() const { return isGone_; }

private:
    /// Nothing when the process is gone.
    std::optional<system::FileContents> asked(const std::string& path) const;
    bool hears() const;

    system::Descriptor channel_{};
    std::chrono::milliseconds patience_;
    std::mutex turn_{};
    std::atomic<bool> isGone_{};
};

}  // namespace tessary::sandbox
