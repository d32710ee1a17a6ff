#include "playback/transport.h"

#include <string>

#include "base/char_span.h"
#include "base/text_format.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "playback/next_track.h"
#include "playback/play_modes.h"
#include "playback/preview_panes.h"
#include "playback/second_player.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

void Show_Button(AppContext& ctx, const char* picture) {
    ctx.form1.Command11.SetPicture(picture);
    ctx.form4.Command11.SetPicture(picture);
}

// The next and previous entries go one Track: the step count reads "1" while
// they run, and the user's count comes back after.
// The kept text is local, so a press that runs inside another (a missing
// file moves on through the same button) cannot leave "1" behind.
template <class Move>
void With_One_Step(AppContext& ctx, Move&& move) {
    TextBox& steps = ctx.form1.Text3;
    const std::string kept = steps.Text();
    steps.SetText("1");
    move();
    steps.SetText(kept);
}

// Marks one row in a result list, or unmarks it.
void Mark_Row(ListBox& box, int index, bool on) { box.SetSelected(index, on); }

// Walks List2 and gives each row, in List2, every mirror list and the result
// list, the selection that `selected` says. Returns the result list's row of
// the current Track, or -1.
template <class Pred>
int Select_Rows(AppContext& ctx, ListBox* result, bool result_is_list5, Pred&& selected) {
    Form1& f = ctx.form1;
    const TrackTable& t = ctx.table;
    const int count = f.List2.ListCount();
    int cursor = 2;  // List4's rows begin behind its two heading rows
    int current_row = -1;
    for (int i = 0; i < count; ++i) {
        const bool on = selected(i);
        f.List2.SetSelected(i, on);
        for (auto& mirror : f.List3_0) mirror.SetSelected(i, on);
        if (result == nullptr) continue;
        int index = -1;
        if (result_is_list5) {
            index = i + 2;
        } else if (cursor < result->ListCount() &&
                   static_cast<int64_t>(Val(Char_Mid(result->List(cursor), 8, 6))) == i + 1) {
            index = cursor++;
        }
        if (index < 0 || index >= result->ListCount()) continue;
        Mark_Row(*result, index, on);
        if (i == t.Current_Track) current_row = index;
    }
    return current_row;
}

}  // namespace

void Command3_Click(AppContext& ctx, int index) {
    TrackTable& t = ctx.table;
    if (t.Track_Count < 0) return;
    With_One_Step(ctx, [&] {
        // Where the Track is left is its exit point. An engine with nothing
        // loaded has no position in the Track: the press that resumes a
        // Collection at start must not wipe the exit point it resumes from.
        MediaEngine* engine = Active_Engine(ctx);
        if (engine != nullptr && !engine->URL().empty()) {
            auto position = engine->currentPosition();
            if (position.ok() && t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
                t.Stop_Position[t.Current_Track] = Currency::FromDouble(position.value());
                t.Saved[t.Current_Track] = false;
            }
        }
        if (index == 0) {
            ctx.playback.Step_Direction = 0;
            Report_Fault(ctx, Step_Forward(ctx));
        } else {
            ctx.playback.Step_Direction = -1;
            Report_Fault(ctx, Step_Backward(ctx));
        }
    });
}

void Command11_Click(AppContext& ctx) {
    // The picture shows the state left behind until the play-state event comes.
    MediaEngine& engine = ctx.ports.player;
    switch (engine.playState()) {
        case PS_Playing:
            Show_Button(ctx, "play");
            Log_Failure(ctx, engine, "pause", engine.pause());
            break;
        case PS_Paused:
            Show_Button(ctx, "pause");
            Log_Failure(ctx, engine, "play", engine.play());
            break;
        default:
            // Nothing plays: a press moves on in the direction of the last move.
            Show_Button(ctx, "stop");
            Report_Fault(ctx, Repeat_Step(ctx));
            break;
    }
}

void Command15_Click(AppContext& ctx, int index) {
    TrackTable& t = ctx.table;
    switch (index) {
        case 0: Report_Fault(ctx, Step_Forward(ctx)); break;
        case 1:
            ctx.playback.Step_Direction = -2;
            Report_Fault(ctx, Step_Backward(ctx));
            break;
        case 2:
            if (t.Current_Track != t.Played_High) {
                t.Current_Track = t.Played_High;
                ctx.playback.Tag_Boxes_Ready = -1;
                ctx.playback.Jump_To_Selected = -1;
                Command3_Click(ctx, 0);
                ctx.form1.Command15[2].SetStyle(0);
            }
            break;
        case 3: Passage(ctx, -1); break;
        default: break;
    }
}

void Command10_Click(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    const TrackTable& t = ctx.table;
    if (index == 0) {
        const std::string path(f.List2.List(f.List2.ListIndex()));
        if (path.empty()) {
            Log_Line(ctx, "-> Δεν υπάρχει κανένα αρχείο για προβολή - No file to display");
            return;
        }
        const size_t slash = path.rfind('/');
        const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
        Log_Failure(ctx, "shell.OpenFolder", ctx.ports.shell.OpenFolder(folder, path));
        return;
    }
    if (index != 1 && index != 2) return;
    if (index == 1 && f.List2.ListIndex() < 0) return;

    SuppressEvents quiet(ctx.core);
    ListBox* result = nullptr;
    bool is_list5 = false;
    if (f.List5.Enabled()) {
        result = &f.List5;
        is_list5 = true;
    } else if (f.List4.Enabled()) {
        result = &f.List4;
    } else if (index == 1) {
        return;
    }

    int current_row = -1;
    if (index == 1) {
        current_row = Select_Rows(ctx, result, is_list5, [&](int i) { return i == t.Current_Track; });
    } else {
        current_row = Select_Rows(ctx, result, is_list5,
                                  [&](int i) { return i <= t.Bound() && t.Played_Number[i] > 0; });
    }
    f.List2.SetListIndex(t.Current_Track);
    for (auto& mirror : f.List3_0) mirror.SetListIndex(t.Current_Track);
    if (result != nullptr && current_row >= 0) result->SetTopIndex(current_row);
    if (index == 2 && (f.List5.ListCount() > 0 || f.List4.ListCount() > 0)) f.MultiPage1.SetValue(1);
}

void Slider1_Change(AppContext& ctx) {
    MediaEngine& engine = ctx.ports.player;
    Slider& slider = ctx.form1.Slider1;
    const int state = engine.playState();
    if (state == PS_Paused || state == PS_Playing)
        Log_Failure(ctx, engine, "setCurrentPosition", engine.setCurrentPosition(slider.Value()));
    slider.SetToolTip(engine.currentPositionString());
}

namespace {

void Set_Volume(AppContext& ctx, MediaEngine* audio) {
    Settings& s = ctx.settings;
    s.Volume_Step = static_cast<int16_t>(RoundHalfEven(ctx.form1.HScroll1.Value() / 20.0));
    if (audio != nullptr) Log_Failure(ctx, *audio, "setVolume", audio->setVolume(s.Volume_Step));
    MediaEngine& video = ctx.ports.video;
    if (ctx.form2.Visible()) Log_Failure(ctx, video, "setVolume", video.setVolume(s.Volume_Step));
}

}  // namespace

void HScroll1_Change(AppContext& ctx) { Set_Volume(ctx, Audio_Engine(ctx)); }

void HScroll1_Scroll(AppContext& ctx) { Set_Volume(ctx, &ctx.ports.player); }

void Text3_Change(AppContext& ctx) {
    TextBox& box = ctx.form1.Text3;
    if (!IsNumeric(box.Text())) box.SetText("3");
    int16_t steps = 0;
    if (!CInt(Val(box.Text()), steps)) {
        Log_Line(ctx, "-> Υπερχείλιση - Overflow in Text3_Change");
        return;
    }
    ctx.settings.Backtrack_Steps = steps;
}

void list2_click(AppContext& ctx) {
    Form1& f = ctx.form1;
    ctx.playback.Selected_File = f.List2.List(f.List2.ListIndex());
    if (ctx.settings.Second_Player == 0 && f.Frame6.Visible()) Multi_Preview(ctx, -1);
}

void list2_dblclick(AppContext& ctx) {
    if (ctx.form1.List2.ListCount() <= 0) return;
    ctx.playback.Tag_Boxes_Ready = -1;
    ctx.playback.Jump_To_Selected = -1;
    Command3_Click(ctx, 0);
}

void mnusystemtrayback_Click(AppContext& ctx) {
    With_One_Step(ctx, [&] {
        ctx.playback.Step_Direction = -1;
        Report_Fault(ctx, Step_Backward(ctx));
    });
}

void mnusystemtraybackwards_Click(AppContext& ctx) {
    ctx.playback.Step_Direction = -2;
    Report_Fault(ctx, Step_Backward(ctx));
}

void mnusystemtrayforward_Click(AppContext& ctx) { Report_Fault(ctx, Step_Forward(ctx)); }

void mnusystemtraynext_Click(AppContext& ctx) {
    if (ctx.table.Track_Count < 0) return;
    With_One_Step(ctx, [&] { Report_Fault(ctx, Step_Forward(ctx)); });
}

void mnusystemtraypause_Click(AppContext& ctx) {
    MenuItem& pause = ctx.form1.Tray("mnusystemtraypause");
    const int16_t video_mode = ctx.table.Video_Mode;
    MediaEngine* engine = nullptr;
    int window = 0;
    if (video_mode == 0 && (ctx.settings.Second_Player == 0 || ctx.settings.Second_Player == -1)) {
        engine = Audio_Engine(ctx);
        window = 1;
    } else if (video_mode == -1) {
        engine = &ctx.ports.video;
        window = 2;
    }
    if (engine == nullptr) return;
    if (engine->playState() == PS_Playing) {
        Log_Failure(ctx, *engine, "pause", engine->pause());
        pause.SetChecked(true);
        ctx.playback.Is_Paused = -1;
    } else {
        // Resuming goes through the start of a Track, with the start point of
        // the mode: from the beginning when the mode says so.
        pause.SetChecked(false);
        ctx.playback.Is_Paused = 0;
        Media_Play(ctx, window);
    }
}

void MnuSysTrayDaCapo_Click(AppContext& ctx) {
    if (MediaEngine* engine = Active_Engine(ctx))
        Log_Failure(ctx, *engine, "setCurrentPosition", engine->setCurrentPosition(0));
}

}  // namespace velmora
