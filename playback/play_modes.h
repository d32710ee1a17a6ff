#pragma once
// The user's switches of playing on the Play menu and the tray: shuffled
// order, preview, pause and sound between files, replay, start point and
// playing at program start. Each sets a flag that the walk, the start of a
// Track or the clock reads.

namespace velmora {

struct AppContext;

void MnuMoreRandom_Click(AppContext& ctx);
void MnuMorePreview_Active_Click(AppContext& ctx);
// Asks for the preview length, 2 to 10 seconds.
void MnuMoreDuration_Click(AppContext& ctx);
// One sample per Track, or four.
void MnuMoreMultiPreview_Click(AppContext& ctx);
void MnuMorePauseActive_Click(AppContext& ctx);
// Asks for the pause length, 2 to 8 seconds; 0 leaves it.
void MnuMorePauseDur_Click(AppContext& ctx);
void MnuMoreSound_Click(AppContext& ctx);
// 0 none, 1 this Track, 2 the whole Collection.
void mnumorereplayn_Click(AppContext& ctx, int index);
void mnusystrayrepeat_Click(AppContext& ctx);
// 0 beginning, 1 the last file's exit point, 2 each file's own exit point.
void MnuPlayAutoStartP_Click(AppContext& ctx, int index);
void MnuMoreAutoStart_Click(AppContext& ctx);

// Between two files: the engine paused out of sight of the play-state
// handlers, and the two tones when Sound_On.
void Pause_Between_Files(AppContext& ctx, int window);

}  // namespace velmora
