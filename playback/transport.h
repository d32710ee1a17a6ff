#pragma once
// The buttons, sliders, list clicks and tray entries by which the user steers
// playing; each a short handler over the walk and the engine.

namespace velmora {

struct AppContext;

// Next (0) or previous (any other index) Track, one Track whatever the step
// count says; keeps the exit point of the Track it leaves.
void Command3_Click(AppContext& ctx, int index);
// Play, pause, or, while nothing plays, the last move again.
void Command11_Click(AppContext& ctx);
// 0 forward and 1 back by the step count, 2 the top of the history, 3 the
// second window.
void Command15_Click(AppContext& ctx, int index);
// 0 the file's folder, 1 select the current Track, 2 select every played one.
void Command10_Click(AppContext& ctx, int index);
// Seek to where the user put the slider.
void Slider1_Change(AppContext& ctx);
// Volume, in twentieths, on the playing audio engine and the video window's.
void HScroll1_Change(AppContext& ctx);
void HScroll1_Scroll(AppContext& ctx);
// The step count; text that is not a number is put back to "3".
void Text3_Change(AppContext& ctx);
void list2_click(AppContext& ctx);
// Plays the row under the cursor without giving it a number.
void list2_dblclick(AppContext& ctx);

// The tray menu's transport entries.
void mnusystemtrayback_Click(AppContext& ctx);
void mnusystemtraybackwards_Click(AppContext& ctx);
void mnusystemtrayforward_Click(AppContext& ctx);
void mnusystemtraynext_Click(AppContext& ctx);
void mnusystemtraypause_Click(AppContext& ctx);
void MnuSysTrayDaCapo_Click(AppContext& ctx);

}  // namespace velmora
