#pragma once
// The small second player window.

namespace velmora {

struct AppContext;

// -1: the main window gives way to the second player window.
void Passage(AppContext& ctx, int direction);

}  // namespace velmora
