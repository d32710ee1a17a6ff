#include "playback/play_state.h"

#include "core/app_context.h"
#include "core/running_report.h"
#include "core/tray_icon.h"
#include "playback/playback_clock.h"

namespace velmora {

namespace {

MediaEngine& Engine_Of(AppContext& ctx, int window) {
    switch (window) {
        case kWindowVideo: return ctx.ports.video;
        case kWindowSecond: return ctx.ports.second;
        default: return ctx.ports.player;
    }
}

}  // namespace

void Show(AppContext& ctx, const std::string& picture, int icon) {
    ctx.form1.Command11.SetPicture(picture);
    ctx.form4.Command11.SetPicture(picture);
    // The tray's icon is made from the window's, so it is taken down and put up again.
    DeleteIconFromTray(ctx);
    ctx.playback.Window_Icon = icon;
    AddIconToTray(ctx);
}

void WindowsMediaPlayer1_PlayStateChange(AppContext& ctx, int window) {
    PlaybackState& p = ctx.playback;
    MenuItem& pause = ctx.form1.Tray("mnusystemtraypause");
    MediaEngine& engine = Engine_Of(ctx, window);
    if (ctx.core.Suppress_Events) return;

    // Each rule reads the state as it is now; the first two may both fire.
    if (engine.playState() == PS_Paused && p.Is_Paused == 0) {
        p.Is_Paused = -1;
        pause.SetChecked(true);
        Show(ctx, "pause", kIconPaused);
    }
    if (engine.playState() == PS_Playing && p.Is_Paused == -1) {
        p.Is_Paused = 0;
        pause.SetChecked(false);
        Show(ctx, "play", kIconPlaying);
    }

    const int state = engine.playState();
    if (state == PS_MediaEnded) {
        // The clock moves on 300 ms from now, through the next button's door.
        p.Preview_Index = 0;
        Show(ctx, "stop", kIconStopped);
        const Timer& period = window == kWindowSecond ? ctx.form4.Timer1 : ctx.form1.Timer1;
        Arm_Short_Tick(ctx, kTickNext, period.Interval());
        TrackTable& t = ctx.table;
        if (t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
            t.Stop_Position[t.Current_Track] = Currency();
            t.Saved[t.Current_Track] = false;
        }
    } else if (state == PS_Ready || state == PS_Stopped) {
        Show(ctx, "stop", kIconStopped);
    } else if (state == PS_Playing) {
        Show(ctx, "play", kIconPlaying);
    }

    p.Last_Play_State[static_cast<size_t>(window)] = engine.playState();

    if (window == kWindowVideo) {
        ctx.settings.Volume_Step = static_cast<int16_t>(engine.volume());
        ctx.form1.HScroll1.SetValue(ctx.settings.Volume_Step * 20);
        ctx.form4.HScroll1.SetValue(ctx.settings.Volume_Step * 20);
    }
}

void WindowsMediaPlayer1_StatusChange(AppContext& ctx) {
    ctx.settings.Volume_Step = static_cast<int16_t>(ctx.ports.player.volume());
}

void WindowsMediaPlayer1_SoundDeviceMissing(AppContext& ctx) {
    if (ctx.playback.No_Sound_Told) return;
    ctx.playback.No_Sound_Told = true;
    Log_Line(ctx, "-> Δεν βρέθηκε συσκευή ήχου, τα αρχεία παίζουν χωρίς ήχο - "
                  "No sound device found, files play without sound");
}

}  // namespace velmora
