#pragma once
// The pictures the controls name by key, drawn at run time so the program
// carries no image files.

#include <QIcon>

#include <string>

namespace velmora {

// The transport glyph for "play", "pause", "stop", "next", "previous",
// "forward", "back", "top", "window" or "volume" on a button; an empty icon
// for a key it does not know.
QIcon ButtonPicture(const std::string& key);
// The window and tray icon: the same glyph on a round badge.
QIcon WindowPicture(const std::string& key);

}  // namespace velmora
