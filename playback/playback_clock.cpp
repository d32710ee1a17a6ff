#include "playback/playback_clock.h"

#include <string>

#include "base/char_span.h"
#include "base/text_format.h"
#include "catalogue/track_list_totals.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/running_report.h"
#include "playback/start_track.h"
#include "playback/track_watch.h"
#include "playback/transport.h"

namespace velmora {

namespace {

constexpr int kShortTick = 300;
constexpr int kTipField = 256;  // the tray's tip, its terminating null included

std::string Clock_Text(int32_t hours, int32_t minutes, int32_t seconds) {
    return Format(hours, "0#") + ":" + Format(minutes, "0#") + ":" + Format(seconds, "0#");
}

void Restore_Period(AppContext& ctx) {
    Timer& clock = ctx.form1.Timer1;
    ctx.playback.Tick_Action = kTickNothing;
    clock.SetEnabled(false);
    clock.SetInterval(ctx.playback.Saved_Interval);
    clock.SetEnabled(true);
}

const char* Stars(int rating_class) {
    switch (rating_class) {
        case 0: return " - ";
        case 1: return " * ";
        case 2: return " ** ";
        case 3: return " *** ";
        case 4: return " **** ";
        case 5: return " ***** ";
        default: return "";
    }
}

// The point of the preview now playing; false when Preview_Index lies outside
// the points, which ends the tick (the points can shrink under a running preview).
bool Preview_Point(const AppContext& ctx, int32_t& point) {
    const auto& points = ctx.settings.Preview_Points;
    const int index = ctx.playback.Preview_Index;
    if (index < 0 || index >= static_cast<int>(points.size())) return false;
    point = points[static_cast<size_t>(index)];
    return true;
}

void Blank_Display(AppContext& ctx) {
    for (auto* boxes : {&ctx.form1.Text5, &ctx.form4.Text5}) {
        (*boxes)[1].SetText("00:00:00");
        (*boxes)[2].SetText("00:00:00");
        (*boxes)[3].SetText("");
        (*boxes)[4].SetText("");
    }
    if (ctx.form1.List2.ListCount() == 0) ctx.form1.Text6.SetText("");
}

}  // namespace

void Arm_Short_Tick(AppContext& ctx, uint8_t action, int saved_interval) {
    Timer& clock = ctx.form1.Timer1;
    ctx.playback.Tick_Action = action;
    ctx.playback.Saved_Interval = static_cast<int16_t>(saved_interval);
    clock.SetEnabled(false);
    clock.SetInterval(kShortTick);
    clock.SetEnabled(true);
}

void Count_Listening_Time(CollectionState& c, int interval_ms) {
    // A 300 ms tick rounds away to nothing.
    c.Stat_Seconds = static_cast<int32_t>(RoundHalfEven(c.Stat_Seconds + interval_ms / 1000.0));
    if (c.Stat_Seconds > 59) {
        c.Stat_Seconds = 0;
        ++c.Stat_Minutes;
        if (c.Stat_Minutes > 59) {
            c.Stat_Minutes = 0;
            ++c.Stat_Hours;
            if (c.Stat_Hours > 23) {
                c.Stat_Hours = 0;
                ++c.Stat_Days;
                // A month of 30 days, a year of the thirteen values 0 to 12.
                if (c.Stat_Days > 29) {
                    c.Stat_Days = 0;
                    ++c.Stat_Months;
                    if (c.Stat_Months > 12) {
                        c.Stat_Months = 0;
                        ++c.Stat_Years;
                    }
                }
            }
        }
    }
}

void Show_Progress_Labels(AppContext& ctx) {
    Form1& f = ctx.form1;
    Form4& g = ctx.form4;
    const TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    if (f.List2.ListCount() == 0 || ctx.core.Suppress_Events) return;

    p.Sum_Text = Day_Time_Text(t.Total_Duration.Round());
    p.Now_Text = Day_Time_Text(p.Played_Now.Round());
    p.Left_Text = Day_Time_Text(p.Time_Left.Round());

    Label& by_class = f.Label2[1];
    if (t.Any_Class_Play == -1) {
        p.Class_Sum_Text = Day_Time_Text(ctx.ratings.Class_Total_Duration.Round());
        p.Class_Now_Text = Day_Time_Text(p.Played_Class_Now.Round());
        p.Class_Left_Text = Day_Time_Text(p.Class_Time_Left.Round());
        by_class.SetVisible(true);
        if (t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
            const int rating = t.Rating_Class[t.Current_Track];
            for (int k = 0; k < kClassCount; ++k)
                if (rating == k) by_class.SetEnabled(t.Class_Play[k] != 0);
        }
        by_class.SetCaption("Προτίμηση -> Τώρα - Now:   " + p.Class_Now_Text + "   Σύνολο - Sum:   " +
                            p.Class_Sum_Text + "   Ακόμη - Left:   " + p.Class_Left_Text + " <-- Rating");
    } else {
        by_class.SetVisible(false);
    }
    f.Label2[0].SetCaption("Τώρα - Now:  " + p.Now_Text + "   Σύνολο - Sum:   " + p.Sum_Text +
                           "   Ακόμη - Left:    " + p.Left_Text);

    for (int i = 0; i < 2; ++i) {
        g.Label7[i].SetCaption(f.Label2[i].Caption());
        g.Label7[i].SetVisible(f.Label2[i].Visible());
        g.Label7[i].SetEnabled(f.Label2[i].Enabled());
    }
}

void Timer1_Timer(AppContext& ctx) {
    Form1& f = ctx.form1;
    Form4& g = ctx.form4;
    TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    Settings& s = ctx.settings;
    EventLoop& loop = ctx.ports.loop;

    // The directory search and the copy engine hold the clock, and so the
    // move to the next Track.
    if (ctx.core.Busy_Working) return;

    // A Track that will not play is given up, and the next tick moves on.
    if (Watch_Progress(ctx)) return;

    // The engine's figures. A failed read ends the tick; the next starts afresh.
    MediaEngine* engine = Active_Engine(ctx);
    std::string url;
    int32_t position = 0, duration = 0;
    int state = 0;
    if (engine != nullptr) {
        url = engine->URL();
        if (!url.empty()) {
            const auto at = engine->currentPosition();
            const auto media = engine->currentMedia();
            if (!at.ok() || media == nullptr) return;
            if (!CLng(RoundHalfEven(at.value()), position) || !CLng(RoundHalfEven(media->duration()), duration))
                return;
            state = engine->playState();
        }
    }

    loop.DoEvents();
    f.Slider1.SetValue(position);

    // Where the Track stands and what is left, of it, of the Collection and
    // of the classes chosen for playing.
    if (!url.empty()) {
        const int32_t left = duration - position;
        p.Position_Hours = position / 3600;
        p.Position_Minutes = position % 3600 / 60;
        p.Position_Seconds = position % 60;
        p.Left_Hours = left / 3600;
        p.Left_Minutes = left % 3600 / 60;
        p.Left_Seconds = left % 60;
        Settle_Played_Duration(ctx);
        p.Played_Now = p.Played_Duration + Currency(position);
        p.Time_Left = t.Total_Duration > p.Played_Now ? t.Total_Duration - p.Played_Now : Currency(left);
        if (t.Any_Class_Play == -1 && t.Current_Track >= 0 && t.Current_Track <= t.Bound()) {
            for (int k = 0; k < kClassCount; ++k) {
                if (t.Rating_Class[t.Current_Track] == k && t.Class_Play[k] != 0) {
                    p.Played_Class_Now = p.Played_Class_Duration + Currency(position);
                    const Currency rest = ctx.ratings.Class_Total_Duration - p.Played_Class_Now;
                    p.Class_Time_Left = rest > Currency() ? rest : Currency(left);
                }
            }
        }
    }

    // The position boxes of both windows, blank at the very start of a Track.
    if (p.Position_Hours <= 0 && p.Position_Minutes <= 0 && p.Position_Seconds <= 0) {
        Blank_Display(ctx);
    } else {
        if (t.Current_Track < 0 || t.Current_Track > t.Bound()) return;
        Currency size = t.File_Size[t.Current_Track];
        const char* unit = "Mb";
        if (size >= Currency(1024)) {
            size = size / Currency(1024);
            unit = "Gb";
        }
        const std::string size_text = Format(size, "000.00") + unit;
        const std::string rate_text = Format(int64_t{t.Bitrate[t.Current_Track]}, "000");
        std::string at_text = Clock_Text(p.Position_Hours, p.Position_Minutes, p.Position_Seconds);
        std::string left_text = Clock_Text(p.Left_Hours, p.Left_Minutes, p.Left_Seconds);
        if (s.Preview_Active == -1) {
            int32_t point = 0;
            if (!Preview_Point(ctx, point)) return;
            at_text += "     [" + Format(int64_t{s.Preview_Seconds}, "00") + "]" + " -" +
                       Format(int64_t{position} - point - 1, "00");
            left_text = Format(int64_t{point} + s.Preview_Seconds - position + 1, "00");
        } else if (s.Preview_Active != 0) {
            at_text = f.Text5[1].Text();
            left_text = f.Text5[2].Text();
        }
        for (auto* boxes : {&f.Text5, &g.Text5}) {
            (*boxes)[3].SetText(size_text);
            (*boxes)[4].SetText(rate_text);
            (*boxes)[1].SetText(at_text);
            (*boxes)[2].SetText(left_text);
        }
        Show_Progress_Labels(ctx);
    }

    // Nothing more to do without a Track.
    if (f.List2.ListCount() == 0 || t.Current_Track < 0) return;

    // The preview plays Preview_Seconds at each point, then moves on.
    if (s.Preview_Active == -1) {
        int32_t point = 0;
        if (!Preview_Point(ctx, point)) return;
        if (position > point + s.Preview_Seconds || position >= duration || duration <= 0) {
            const int upper = static_cast<int>(s.Preview_Points.size()) - 1;
            if (p.Preview_Index >= upper) {
                p.Preview_Index = 0;
                Command3_Click(ctx, 0);
            } else {
                ++p.Preview_Index;
                const auto next = static_cast<int16_t>(RoundHalfEven((p.Preview_Index + 1) * double(duration) / 5));
                s.Preview_Points[static_cast<size_t>(p.Preview_Index)] = next;
                if (engine != nullptr)
                    Log_Failure(ctx, *engine, "setCurrentPosition", engine->setCurrentPosition(next));
            }
        }
    }

    loop.DoEvents();

    // Every change of Track counts, also a step back to one played before.
    if (t.Current_Track != p.Last_Track) {
        p.Last_Track = t.Current_Track;
        ++ctx.collection.Stat_Files;
        File_Name_Of(p.Current_File, p.Last_Name);
    }

    // The tray's tip, every tick.
    if (t.Current_Track > t.Bound()) return;
    std::string tip = "No(" + std::to_string(t.Current_Track) + ") -> " + f.Text5[1].Text() + "<" +
                      Stars(t.Rating_Class[t.Current_Track]) + ">" + f.Text5[2].Text() + "\n" + " - " + p.Last_Name;
    if (Char_Count(tip) > kTipField - 1) tip = Char_Left(tip, kTipField - 1);
    p.Tray_Tip = tip;
    ctx.ports.shell.SetTrayTip(tip);

    // Listening time, only while playing.
    if (state == PS_Playing) Count_Listening_Time(ctx.collection, f.Timer1.Interval());

    // The automatic save. After midnight the seconds start again below
    // Last_Save, and no save comes until they have passed it again.
    const int now = loop.Now().SecondsSinceMidnight();
    if (s.Save_Auto == -1 && static_cast<double>(now) > ctx.core.Last_Save + 600.0) {
        Save_Collection(ctx, false, false);
        Log_Line(ctx, " -> Σώθηκε 10' - Saved 10'");
        ctx.core.Last_Save = now;
    }

    // What the start or the end of a Track left for this tick.
    if (p.Tick_Action == kTickStart) {
        Restore_Period(ctx);
        MediaEngine* active = Active_Engine(ctx);
        if (active == nullptr) return;
        const Status played = active->play();
        Log_Failure(ctx, *active, "play", played);
        if (!Watch_Started(ctx, *active, played)) return;
        // The state of the main window's engine, also when the second window
        // plays. An engine that never ends its loading is not waited for
        // longer than the watch allows a Track to stand still.
        MediaEngine& loading = t.Video_Mode == 0 ? ctx.ports.player : ctx.ports.video;
        const int64_t since = loop.TickCount();
        while (loading.playState() == PS_Transitioning && loop.TickCount() - since < kStallLimitMs)
            loop.WaitForEvents(10);
    } else if (p.Tick_Action == kTickNext) {
        Restore_Period(ctx);
        Command3_Click(ctx, 0);
    }
}

}  // namespace velmora
