// The widgets that a user has placed, kept in a file from one start to the next.
//
//     auto widgets = loadWidgets(file).value();
//     widgets.push_back(widget);
//     if (const auto saved = saveWidgets(file, widgets); !saved) complain(saved.fault().message());
//
// The file is one JSON object:
//
//     {"widgets": [{"number": 1, "widget": "com.tessary.desktop.widgets.alarm", "family": "small",
//                   "size": {"width": 164, "height": 164}, "pin": null, "place": {
//                       "monitor": {"maker": "Dell Inc.", "model": "U2720Q", "connector": "DP-1"},
//                       "x": {"from": "right", "points": 20},
//                       "y": {"from": "top", "points": 20}}}]}
//
// Members that are not among these do not survive being written anew. The size is what the
// extension said that the family's is; in a file without it, the small and the medium that there
// were then.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/places/placed_widget.h"
#include "platform/foundation/result.h"
#include "platform/system/files.h"

namespace tessary::places {

/// While this is there, no other that holds one changes the file; waits for those that do. Where
/// its folder can neither be found nor made, it holds nothing.
class FileLock {
public:
    FileLock();

private:
    system::Descriptor folder_{};
};

/// $XDG_CONFIG_HOME/tessary-widgets/desktop.json, by default below ~/.config.
foundation::Result<std::filesystem::path> stateFile();

/// The text of the file, with a newline at its end.
std::string encodeWidgets(const std::vector<PlacedWidget>& widgets);

/// What such a text says; nothing where it is anything but well-formed: a member missing or of
/// another kind, a number that is not from 1 or is given twice, a place or a size beyond any
/// desktop.
std::optional<std::vector<PlacedWidget>> decodeWidgets(std::string_view text);

/// The widgets of a file; none where there is no file. A file that cannot be read or understood is
/// renamed to FILE.unreadable-N, which standard error tells, and counts as none. Where it cannot be
/// renamed that is a fault, so that nothing overwrites it.
foundation::Result<std::vector<PlacedWidget>> loadWidgets(const std::filesystem::path& file);

/// Replaces the file as a whole, making its folder; where that fails it is what it was.
foundation::Result<void> saveWidgets(const std::filesystem::path& file,
                                     const std::vector<PlacedWidget>& widgets);

}  // namespace tessary::places
