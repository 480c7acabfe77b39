// Sees when what lies at a path may have changed, without looking at it again and again.
//
//     PathWatch watch{{"/home/ana/widgets/alarms.json"}};       // before looking: nothing is missed
//     poll(watch.descriptor());
//     if (watch.takeEvents()) look();
//
// A file written, replaced by a rename, linked or removed counts, and so do the folders that it
// lies in, or where that lies, being made, moved or removed. Links are followed: one on the way
// that is replaced counts, and so does the file that it leads to. Nothing of it need exist.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/foundation/result.h"
#include "platform/system/files.h"

namespace tessary::system {

class PathWatch {
public:
    /// Which folders of a path are watched. Those near the root are seldom changed and may be busy;
    /// who waits for months had better not be woken by them.
    enum class Reach { all, lastThree };

    /// Relative paths count from the current folder; the last name of one may be `*` and what names
    /// there have to end with.
    explicit PathWatch(std::vector<std::filesystem::path> paths, Reach reach = Reach::all);

    /// To be waited on: it becomes readable when something has happened. Negative where the system
    /// has no watch to give.
    int descriptor() const { return queue_.number(); }

    /// Takes in what has happened and follows the paths anew; whether any of it matters to them.
    bool takeEvents();

    /// Follows the paths anew: once more after a burst of events, for a folder that was made while
    /// its parent was being looked at.
    void follow();

    /// Why some changes may go unseen: "cannot watch /home/ana: Permission denied" where the last
    /// folder that exists hides its names, or what the system lacks.
    const foundation::Result<void>& sight() const { return sight_; }

private:
    struct Folder {
        std::filesystem::path path{};
        std::vector<std::string> names{};  ///< what matters there
    };

    void followPath(const std::filesystem::path& path);
    void followLinksIn(const std::filesystem::path& folder, const std::string& pattern);
    void watch(const std::filesystem::path& folder, const std::string& name, unsigned events);
    bool matters(int watch, unsigned events, const std::string& name) const;

    std::vector<std::filesystem::path> paths_;
    Reach reach_;
    Descriptor queue_;
    std::map<int, Folder> folders_{};  ///< by watch
    std::filesystem::path hidden_{};  ///< while a path is followed: the folder that hides its names
    foundation::Result<void> sight_{};
};

}  // namespace tessary::system
