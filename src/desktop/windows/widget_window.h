// A card in a window of its own: a picture without frame or focus, below all other windows.
//
// On Wayland it is a surface of the layer shell's bottom layer with the namespace "desktop", where
// the compositor has that; on X11 a window of the type DESKTOP; elsewhere a plain one.
#pragma once

#include <memory>

#include "desktop/windows/card.h"

namespace tessary::windows {

/// Connects to the display, once for the program. False where there is none.
bool openDisplay();

/// Needs an open display.
std::unique_ptr<Card> openWidgetWindow(Card::Events events);

}  // namespace tessary::windows
