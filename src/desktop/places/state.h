// The widgets that a user has placed, kept in a file from one start to the next.
//
//     auto widgets = loadWidgets(stateFile());
//     widgets.push_back(widget);
//     saveWidgets(stateFile(), widgets);
//
// The file is one JSON object:
//
//     {"widgets": [{"number": 1, "widget": "com.tessary.desktop.widgets.alarm", "family": "small",
//                   "pin": null, "place": {
//                       "monitor": {"maker": "Dell Inc.", "model": "U2720Q", "connector": "DP-1"},
//                       "x": {"from": "right", "points": 20},
//                       "y": {"from": "top", "points": 20}}}]}
//
// Members that are not among these do not survive being written anew.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/places/placed_widget.h"

namespace tessary::places {

/// $XDG_CONFIG_HOME/tessary-widgets/desktop.json, by default below ~/.config.
std::string stateFile();

/// The text of the file, with a newline at its end.
std::string encodeWidgets(const std::vector<PlacedWidget>& widgets);

/// What such a text says; nothing where it is anything but well-formed: a member missing or of
/// another kind, a number that is not from 1 or is given twice, a place off any desktop.
std::optional<std::vector<PlacedWidget>> decodeWidgets(std::string_view text);

/// The widgets of a file; none where there is no file. A file that cannot be read or understood is
/// renamed to FILE.unreadable-N, which standard error tells, and counts as none. Throws
/// std::runtime_error where it cannot be renamed, so that nothing can overwrite it.
std::vector<PlacedWidget> loadWidgets(const std::string& file);

/// Replaces the file as a whole, making its folder. Throws std::runtime_error where that fails; the
/// file is then what it was.
void saveWidgets(const std::string& file, const std::vector<PlacedWidget>& widgets);

}  // namespace tessary::places
