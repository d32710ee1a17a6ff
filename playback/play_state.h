#pragma once
// The engines' play-state events: they keep the play button's picture, the
// window and tray icon and the pause flag in step with the engine, and at the
// end of a Track leave the move to the next one to the clock, since the
// engine must not be given a new file from inside its own event.

#include <string>

namespace velmora {

struct AppContext;

// PlayStateChange of the engine of the main window (kWindowMain), the video
// window (kWindowVideo) or the second window (kWindowSecond). The state is
// read afresh from the engine, not taken from the event.
void WindowsMediaPlayer1_PlayStateChange(AppContext& ctx, int window);
// StatusChange of the main window's engine: a volume changed by other means stays known.
void WindowsMediaPlayer1_StatusChange(AppContext& ctx);
// SoundDeviceMissing of any playing engine: the log says it, once a run, and
// playing goes on without sound.
void WindowsMediaPlayer1_SoundDeviceMissing(AppContext& ctx);
// The play button's picture on both windows and the icon of both windows and the tray.
void Show(AppContext& ctx, const std::string& picture, int icon);

}  // namespace velmora
