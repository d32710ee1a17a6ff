#pragma once
// The transport buttons.

namespace velmora {

struct AppContext;

// The play command: 0 is the play button's own press.
void Command3_Click(AppContext& ctx, int index);
// The play / pause / stop button.
void Command11_Click(AppContext& ctx);

}  // namespace velmora
