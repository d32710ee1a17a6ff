#include "playback/start_track.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "base/char_span.h"
#include "base/codepage1253.h"
#include "base/text_format.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "metadata/album_art.h"
#include "playback/next_track.h"
#include "playback/play_modes.h"
#include "playback/playback_clock.h"
#include "playback/video_window.h"
#include "ratings/rating_calculation.h"
#include "ratings/rating_marks.h"
#include "ratings/reset_views.h"

namespace fs = std::filesystem;

namespace velmora {

const char* const kGoneForGood = "never_existed_non_existing.mp3";

namespace {

// Upper case of the Latin and Greek letters of code page 1253, the genre
// texts' alphabet; other characters stay as they are.
std::string Upper_Case(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c >= 'a' && c <= 'z') {
            out.push_back(static_cast<char>(c - 'a' + 'A'));
            continue;
        }
        if ((c == 0xCE || c == 0xCF) && i + 1 < text.size()) {
            const unsigned code = ((c & 0x1Fu) << 6) | (static_cast<unsigned char>(text[i + 1]) & 0x3Fu);
            unsigned upper = code;
            if (code >= 0x3B1 && code <= 0x3C9 && code != 0x3C2) upper = code - 0x20;  // α..ω
            else if (code == 0x3C2) upper = 0x3A3;                                      // final ς
            else if (code == 0x3AC) upper = 0x386;                                      // ά
            else if (code >= 0x3AD && code <= 0x3AF) upper = code - 0x25;               // έ ή ί
            else if (code == 0x3CC) upper = 0x38C;                                      // ό
            else if (code == 0x3CD || code == 0x3CE) upper = code - 0x3F;               // ύ ώ
            else if (code == 0x3CA || code == 0x3CB) upper = code - 0x20;               // ϊ ϋ
            out.push_back(static_cast<char>(0xC0 | (upper >> 6)));
            out.push_back(static_cast<char>(0x80 | (upper & 0x3F)));
            ++i;
            continue;
        }
        out.push_back(static_cast<char>(c));
    }
    return out;
}

std::string Clock_Text(int64_t seconds) {
    return Format(seconds / 3600, "0#") + ":" + Format(seconds % 3600 / 60, "0#") + ":" + Format(seconds % 60, "0#");
}

MediaEngine* Engine_Of_Window(AppContext& ctx, int window) {
    if (window == 2) return &ctx.ports.video;
    if (window == 1) return Audio_Engine(ctx);
    return nullptr;
}

// A file gone or emptied: it keeps its row and its number, gets class X, and
// the walk moves on the way it was going.
void Missing_File(AppContext& ctx) {
    TrackTable& t = ctx.table;
    const std::string& file = ctx.playback.Current_File;
    const std::string n = Str(int64_t{t.Current_Track} + 1);
    const std::string message = " Το αρχείο (" + n + ")" + file + "\n" + " δεν υφίσταται πλέον " +
                                "ή έχει μηδενικό μήκος. Του αποδίδεται αρνητική προτίμηση..." + "\n" + "File (" + n +
                                ")" + file + "\n" +
                                " dosn't not longer exists or has zero lenght. It's been given negative favor...";
    Log_Line(ctx, "->" + message);
    // A drive that is gone takes a missing file per row: when nothing else
    // changed the rows since the totals were counted, only this row moves
    // to X, so the walk past all of them is not quadratic.
    const int row = t.Current_Track;
    const bool in_table = row >= 0 && row <= t.Bound();
    const ListBox& letters = ctx.form1.List3_0[1];
    const int old_class = in_table && row < letters.ListCount() ? Class_Of_Letter(letters.List(row)) : -1;
    const Currency old_size = in_table ? t.File_Size[row] : Currency();
    const bool one_row = in_table && old_class >= 0 && Recount_Is_Current(ctx);
    if (in_table) {
        t.File_Size[row] = Currency();
        t.Rating_Class[row] = 1;
        t.Saved[row] = false;
    }
    ctx.ratings.Stats_Dirty = true;
    DeikseAgapi(ctx, 1, t.Current_Track);
    if (one_row)
        Recount_Moved_Row(ctx, row, old_class, old_size);
    else
        Calculate_Ratings(ctx);
    ctx.ports.shell.Beep(2500, 50);
    // The walk moves on from the loop, not from here: a Collection on a drive
    // that is gone would otherwise nest one start inside the last for every
    // missing file, and tens of thousands of them would run out of stack.
    // The step is taken as it would have been here: with the step count the
    // press had set (a next or previous press counts one), and the count the
    // box held when the posted step runs is put back after it.
    if (ctx.form1.List2.ListCount() - 1 > 0)
        ctx.ports.loop.Post([&ctx, steps = ctx.form1.Text3.Text()] {
            TextBox& box = ctx.form1.Text3;
            const std::string kept = box.Text();
            box.SetText(steps);
            Report_Fault(ctx, Repeat_Step(ctx));
            box.SetText(kept);
        });
}

}  // namespace

void Fill_Tag_Boxes(AppContext& ctx) {
    Form1& f = ctx.form1;
    const std::string& file = ctx.playback.Current_File;
    MediaEngine& reader = ctx.ports.reader;
    ctx.playback.Tag_Boxes_Ready = 0;
    SuppressEvents quiet(ctx.core);

    static const char* const kBoxes[5] = {"Title", "Artist", "Album", "WM/Year", "Comment"};
    for (int i = 0; i < 5; ++i) {
        auto item = reader.newMedia(file);
        f.Text1[i].SetText(item ? item->getItemInfo(kBoxes[i]) : std::string());
    }

    auto item = reader.newMedia(file);
    const std::string genre = Upper_Case(item ? item->getItemInfo("Genre") : std::string());
    f.Combo1.SetListIndex(-1);
    f.Combo1.SetText("");
    if (IsNumeric(genre)) {
        for (int row = 0; row < f.Combo1.ListCount(); ++row) {
            if (Upper_Case(Char_Mid(f.Combo1.List(row), 7)) == genre) {
                f.Combo1.SetListIndex(row);
                break;
            }
        }
    } else {
        f.Combo1.SetText(genre);
    }

    ctx.metadata.Tag_File = file;
    ctx.metadata.Tag_Dirty = false;
    ctx.playback.Tag_Boxes_Ready = -1;
}


MediaEngine* Audio_Engine(AppContext& ctx) {
    if (ctx.settings.Second_Player == 0) return &ctx.ports.player;
    if (ctx.settings.Second_Player == -1) return &ctx.ports.second;
    return nullptr;
}

MediaEngine* Active_Engine(AppContext& ctx) {
    if (ctx.table.Video_Mode != 0) return &ctx.ports.video;
    return Audio_Engine(ctx);
}

void File_Length_Check(AppContext& ctx, std::string& path, int64_t& size) {
    std::error_code ec;
    size = 0;
    bool fault = path.empty() || !fs::is_regular_file(path, ec);
    if (!fault) {
        std::ifstream in(path, std::ios::binary);
        fault = !in.is_open();
        if (!fault) {
            const auto length = fs::file_size(path, ec);
            fault = static_cast<bool>(ec);
            if (!fault) size = static_cast<int64_t>(length);
        }
    }
    ctx.ports.loop.DoEvents();
    if (fault || size == 0) path.clear();
}

bool Is_Video_File(AppContext& ctx, const std::string& path) {
    auto item = ctx.ports.reader.newMedia(path);
    const std::string type = FoldCase(item ? item->getItemInfo("MediaType") : std::string());
    if (type == "audio") return false;
    if (type == "photo" || type == "video") return true;
    // Kept as they stand: "*.wmv" has five characters and never matches, and
    // upper-case extensions do not match either.
    static const char* const kTails[] = {".mpg", "mpeg", ".avi", ".asf", ".wmv", ".jpg",
                                         "*.wmv", "jpeg", ".mpe", ".m1v", "mpv2", "mp2v"};
    const std::string tail = path.size() >= 4 ? path.substr(path.size() - 4) : path;
    for (const char* candidate : kTails)
        if (tail == candidate) return true;
    return false;
}

void Decide_Video(AppContext& ctx) {
    TrackTable& t = ctx.table;
    std::string copy = ctx.playback.Current_File;
    int64_t size = 0;
    File_Length_Check(ctx, copy, size);
    if (copy.empty()) {
        Missing_File(ctx);
        return;
    }

    if (t.Video_Mode == -1) {
        Video(ctx);
    } else if (t.Video_Mode == 0) {
        Play_Audio(ctx);
    } else if (Is_Video_File(ctx, ctx.playback.Current_File)) {
        if (t.Video_Mode != 2) Video(ctx);
    } else if (t.Video_Mode == 2) {
        Play_Audio(ctx);
    }
    // Kept as it stands: in Auto a file that is not video starts nothing, and
    // the walk stands on it until the user moves on.

    Fill_Tag_Boxes(ctx);
    Show_Album_Art(ctx);
}

void Play_Audio(AppContext& ctx) {
    Settings& s = ctx.settings;
    const std::string& file = ctx.playback.Current_File;
    double duration = 0;
    if (MediaEngine* engine = Audio_Engine(ctx)) {
        if (auto item = engine->newMedia(file)) duration = item->duration();
        Log_Failure(ctx, *engine, "setURL", engine->setURL(file));
        Log_Failure(ctx, *engine, "setVolume", engine->setVolume(s.Volume_Step));
    }
    Media_Play(ctx, 1);

    const int64_t whole = RoundHalfEven(duration);
    for (Slider* slider : {&ctx.form1.Slider1, &ctx.form4.Slider1}) {
        slider->SetMax(static_cast<int>(whole));
        // A click in the channel moves 5% of the Track.
        slider->SetLargeChange(static_cast<int>(RoundHalfEven(slider->Max() * 5 / 100.0)));
    }
    ctx.form1.Text5[0].SetText(Clock_Text(whole));
    ctx.form4.Text5[0].SetText(Clock_Text(whole));
}

void Video(AppContext& ctx) {
    const std::string& file = ctx.playback.Current_File;
    if (file.empty()) return;
    MediaEngine& video = ctx.ports.video;
    Show_Video_Window(ctx);
    (void)video.newMedia(file);
    Log_Failure(ctx, video, "setURL", video.setURL(file));
    Log_Failure(ctx, video, "setVolume", video.setVolume(ctx.settings.Volume_Step));
    // The sound must not come from two engines. Loading no file is how the
    // audio engine lets go of its own; the engine answers that there is no
    // such file, every time, which is no fault.
    Log_Failure(ctx, ctx.ports.player, "stop", ctx.ports.player.stop());
    (void)ctx.ports.player.setURL("");
    Media_Play(ctx, 2);
    Wait(ctx.ports.loop, 200);
    auto media = video.currentMedia();
    const int64_t whole = RoundHalfEven(media ? media->duration() : 0.0);
    ctx.form1.Text5[0].SetText(Clock_Text(whole));
    ctx.form4.Text5[0].SetText(Clock_Text(whole));
    Size_Video_Control(ctx);
}

void Media_Play(AppContext& ctx, int window) {
    TrackTable& t = ctx.table;
    Settings& s = ctx.settings;
    PlaybackState& p = ctx.playback;
    MediaEngine* engine = Engine_Of_Window(ctx, window);

    // Half a second before the first start: once per run, and only when the
    // program started playing by itself.
    if (p.First_Play_Done == 0 && s.Auto_Start == -1) {
        Wait(ctx.ports.loop, 500);
        p.First_Play_Done = -1;
    }

    // A Track that comes up while the user has paused stays paused.
    if (ctx.form1.Tray("mnusystemtraypause").Checked()) {
        if (engine != nullptr) Log_Failure(ctx, *engine, "pause", engine->pause());
        return;
    }

    // The start point: a preview's first point; otherwise the beginning, this
    // file's stored stop position, or where the last file stopped, which
    // Current_Position still holds, as the mode says.
    if (s.Preview_Active == -1) {
        auto duration_now = [&] {
            auto media = engine != nullptr ? engine->currentMedia() : nullptr;
            int16_t point = 0;
            return CInt(media ? media->duration() / 5 : 0.0, point) ? point : int16_t{0};
        };
        if (s.Preview_Points.empty()) s.Preview_Points.assign(1, 0);
        s.Preview_Points[0] = duration_now();
        if (s.Preview_Points[0] == 0) {
            // The engine may not have opened the file yet: once more, no further.
            Wait(ctx.ports.loop, 1000);
            s.Preview_Points[0] = duration_now();
        }
        t.Current_Position = s.Preview_Points[0];
    } else if (s.Autostart_Index == 2) {
        if (t.Current_Track >= 0 && t.Current_Track <= t.Bound())
            t.Current_Position = static_cast<int32_t>(t.Stop_Position[t.Current_Track].Round());
    } else if (s.Autostart_Index == 0) {
        t.Current_Position = 0;
    }

    if (engine != nullptr)
        Log_Failure(ctx, *engine, "setCurrentPosition", engine->setCurrentPosition(t.Current_Position));
    ctx.form1.Slider1.SetValue(t.Current_Position);

    if (ctx.form1.Menus("MnuMorePauseActive").Checked()) Pause_Between_Files(ctx, window);

    // The next tick, 300 ms from now, starts the engine.
    Arm_Short_Tick(ctx, kTickStart, ctx.form1.Timer1.Interval());
}

std::string Dump_File_Path(const AppContext& ctx) { return ctx.core.App_Path + "dump.mp3"; }

std::string Silent_Mp3_Bytes() {
    // MPEG-1 layer III, 32 kbit/s, 44.1 kHz, mono: a 104-byte frame whose side
    // information and main data are all zero decodes to silence. Eight frames
    // are about a fifth of a second, enough for any engine to open and play.
    std::string frame(104, '\0');
    frame[0] = static_cast<char>(0xFF);
    frame[1] = static_cast<char>(0xFB);
    frame[2] = static_cast<char>(0x10);
    frame[3] = static_cast<char>(0xC4);
    std::string bytes;
    for (int i = 0; i < 8; ++i) bytes += frame;
    return bytes;
}

void Release_Engine(AppContext& ctx, int window) {
    const std::string dump = Dump_File_Path(ctx);
    {
        std::ofstream out(dump, std::ios::binary | std::ios::trunc);
        out << Silent_Mp3_Bytes();
    }
    MediaEngine& engine = window == 2 ? ctx.ports.video : ctx.ports.player;
    Log_Failure(ctx, engine, "setURL", engine.setURL(dump));
    (void)engine.newMedia(dump);
}

void Drop_Dump_File(AppContext& ctx) {
    std::error_code ec;
    fs::remove(Dump_File_Path(ctx), ec);  // a file that is not there is no fault here
}

void Replace_Playing_File(AppContext& ctx, const std::string& path, const std::string& new_path,
                          const std::string& marker, const std::function<void()>& write_tags) {
    PlaybackState& p = ctx.playback;
    SuppressEvents quiet(ctx.core);
    if (path != p.Current_File) {
        if (write_tags) write_tags();
        return;
    }

    int window = 0;
    if (ctx.table.Video_Mode == 0) window = 1;
    else if (ctx.table.Video_Mode == -1) window = 2;
    MediaEngine* engine = window == 1 ? &ctx.ports.player : window == 2 ? &ctx.ports.video : nullptr;

    double position = 0;
    int state = 0;
    if (engine != nullptr) {
        position = engine->currentPosition().value_or(0.0);
        state = engine->playState();
        Log_Failure(ctx, *engine, "stop", engine->stop());
        Log_Failure(ctx, *engine, "close", engine->close());
        Release_Engine(ctx, window);
    }

    if (marker != kGoneForGood) {
        if (write_tags) write_tags();
    } else {
        // The file goes away for good: nothing of it stays on the screen.
        for (auto& box : ctx.form1.Text1) box.SetText("");
        ctx.form1.Combo1.SetListIndex(-1);
        ctx.form1.Picture1.SetPicture("");
        ctx.form4.Picture1.SetPicture("");
    }
    Drop_Dump_File(ctx);

    if (engine != nullptr) {
        Log_Failure(ctx, *engine, "setURL", engine->setURL(new_path.empty() ? p.Current_File : new_path));
        Log_Failure(ctx, *engine, "setCurrentPosition", engine->setCurrentPosition(position));
        if (state == PS_Playing) Log_Failure(ctx, *engine, "play", engine->play());
        else Log_Failure(ctx, *engine, "pause", engine->pause());
    }
}

}  // namespace velmora
