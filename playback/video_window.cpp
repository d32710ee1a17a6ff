#include "playback/video_window.h"

#include <algorithm>
#include <string>

#include "base/text_format.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

void Fill_Window(Form2& w) {
    w.WindowsMediaPlayer1.SetHeight(std::max(0, w.Inner.Height() - kVideoStripHeight));
    w.WindowsMediaPlayer1.SetWidth(w.Inner.Width());
}

// Where the engine stands, rounded, kept as the Track's position. An engine
// with nothing loaded has no position in the Track, and what is stored stays.
void Keep_Position(AppContext& ctx, MediaEngine* engine) {
    if (engine == nullptr || engine->URL().empty()) return;
    auto position = engine->currentPosition();
    if (!position.ok()) return;
    TrackTable& t = ctx.table;
    const auto p = static_cast<int32_t>(RoundHalfEven(position.value()));
    t.Current_Position = p;
    if (t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
        t.Stop_Position[t.Current_Track] = Currency::FromDouble(p);
        t.Saved[t.Current_Track] = false;
    }
}

// The main window's engine takes the file over at the picture's position;
// the video engine lets it go. With `menu_decides` the menu that unloads the
// window chooses the mode itself, so the close does not choose Hide for it.
void Unload_Form2(AppContext& ctx, bool menu_decides) {
    Form2& w = ctx.form2;
    if (w.Unloading || !w.Loaded) return;
    w.Unloading = true;
    MediaEngine& video = ctx.ports.video;
    MediaEngine& player = ctx.ports.player;
    const std::string& file = ctx.playback.Current_File;

    const double position = video.URL().empty() ? 0.0 : video.currentPosition().value_or(0.0);
    auto media = video.currentMedia();
    const double duration = media ? media->duration() : 0.0;
    Log_Failure(ctx, player, "setURL", player.setURL(file));
    Log_Failure(ctx, player, "setCurrentPosition", player.setCurrentPosition(position));
    for (Slider* slider : {&ctx.form1.Slider1, &ctx.form4.Slider1}) {
        slider->SetMax(static_cast<int>(RoundHalfEven(duration)));
        slider->SetLargeChange(static_cast<int>(RoundHalfEven(slider->Max() * 5 / 100.0)));
    }
    Log_Failure(ctx, player, "play", player.play());
    Log_Failure(ctx, player, "setVolume", player.setVolume(ctx.settings.Volume_Step));
    // Loading no file is how an engine lets go of its own; it answers that
    // there is no such file, which is no fault.
    (void)video.setURL("");

    if (!menu_decides) mnuvideoshow_Click(ctx, 1);
    w.Loaded = false;
    w.Full_Screen = false;
    w.Hide();
    w.Unloading = false;
}

}  // namespace

void Show_Video_Window(AppContext& ctx) {
    if (!ctx.form2.Loaded) Form2_Form_Load(ctx);
    ctx.form2.Show();
}

void Form2_Form_Load(AppContext& ctx) {
    Form2& w = ctx.form2;
    const Settings& s = ctx.settings;
    w.Loaded = true;
    if (s.Video_Width > 0 && s.Video_Height > 0) {
        w.Inner.SetWidth(s.Video_Width);
        w.Inner.SetHeight(s.Video_Height);
    }
    Fill_Window(w);
}

void Form2_Form_Resize(AppContext& ctx) {
    Form2& w = ctx.form2;
    Fill_Window(w);
    if (w.Full_Screen || w.Inner.Width() <= 0 || w.Inner.Height() <= 0) return;
    ctx.settings.Video_Width = static_cast<int16_t>(std::min(w.Inner.Width(), 32767));
    ctx.settings.Video_Height = static_cast<int16_t>(std::min(w.Inner.Height(), 32767));
}

void Form2_Form_QueryUnload(AppContext& ctx) { Unload_Form2(ctx, false); }

void Size_Video_Control(AppContext& ctx) {
    Form2& w = ctx.form2;
    if (w.WindowsMediaPlayer1.Width() == 0) {
        w.WindowsMediaPlayer1.SetWidth(kDefaultPictureWidth);
        w.Inner.SetWidth(kDefaultPictureWidth);
    }
    if (w.WindowsMediaPlayer1.Height() == 0) {
        w.WindowsMediaPlayer1.SetHeight(kDefaultPictureHeight);
        w.Inner.SetHeight(kDefaultPictureHeight + kVideoStripHeight);
    }
}

void mnuvideoshow_Click(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    for (int i = 0; i < 3; ++i) f.Menus("mnuvideoshow", i).SetChecked(i == index);
    switch (index) {
        case 2:
            if (t.Video_Mode == -1) {
                Keep_Position(ctx, &ctx.ports.video);
                Unload_Form2(ctx, true);
            } else {
                Keep_Position(ctx, Audio_Engine(ctx));
            }
            t.Video_Mode = 1;
            if (t.Resume_Pending == 0) Decide_Video(ctx);
            break;
        case 1:
            if (t.Video_Mode == -1) {
                Keep_Position(ctx, &ctx.ports.video);
                Unload_Form2(ctx, true);
            }
            t.Video_Mode = 0;
            break;
        case 0:
            Keep_Position(ctx, Audio_Engine(ctx));
            t.Video_Mode = -1;
            Video(ctx);
            break;
        default: break;
    }
}

}  // namespace velmora
