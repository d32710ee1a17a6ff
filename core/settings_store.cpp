#include "core/settings_store.h"

#include <algorithm>
#include <limits>

#include "base/file_kind.h"
#include "base/record_file.h"
#include "core/app_context.h"
#include "core/program_folders.h"
#include "core/running_report.h"

namespace velmora {

namespace {

constexpr int kPreferencesFolder = 2;

// One value per record, in sequence from record 1. A record that cannot be
// read leaves its value as it was and raises the flag; reading goes on, so a
// shorter file of an older version keeps everything read before its end.
class RecordReader {
public:
    static constexpr bool kReading = true;
    explicit RecordReader(RecordFile& file) : m_file(file), m_records(file.RecordCount()) {}

    bool Integer(int16_t& v) { return Take(v, &RecordFile::GetInteger); }
    bool Long(int32_t& v) { return Take(v, &RecordFile::GetLong); }
    bool Byte(uint8_t& v) { return Take(v, &RecordFile::GetByte); }
    bool Text(std::string& v) { return Take(v, &RecordFile::GetString); }
    void Fault() { m_error = true; }
    bool Error() const { return m_error; }

private:
    template <class T>
    bool Take(T& v, bool (RecordFile::*get)(int64_t, T&)) {
        T read{};
        // Past the end every read fails alike; a count read from a damaged
        // file may ask for tens of thousands of them.
        const int64_t record = m_next++;
        if (record > m_records || !(m_file.*get)(record, read)) {
            m_error = true;
            return false;
        }
        v = std::move(read);
        return true;
    }

    RecordFile& m_file;
    const int64_t m_records;
    int64_t m_next = 1;
    bool m_error = false;
};

class RecordWriter {
public:
    static constexpr bool kReading = false;
    explicit RecordWriter(RecordFile& file) : m_file(file) {}

    bool Integer(int16_t& v) { return Check(m_file.PutInteger(m_next++, v)); }
    bool Long(int32_t& v) { return Check(m_file.PutLong(m_next++, v)); }
    bool Byte(uint8_t& v) { return Check(m_file.PutByte(m_next++, v)); }
    // A text the code page cannot carry, or too long for its record, is a
    // write error: the file then gets no backup.
    bool Text(std::string& v) { return Check(m_file.PutString(m_next++, v)); }
    void Fault() {
        if (!m_error) m_first = "a list too long for the file";
        m_error = true;
    }
    bool Error() const { return m_error; }
    const std::string& First_Error() const { return m_first; }

private:
    bool Check(bool ok) {
        if (!ok && !m_error) m_first = m_file.LastError();
        if (!ok) m_error = true;
        return ok;
    }

    RecordFile& m_file;
    int64_t m_next = 1;
    bool m_error = false;
    std::string m_first;  // the file's message about the first value it could not take
};

int16_t Flag(bool on) { return on ? -1 : 0; }

// A value that only a menu's check mark holds: the mark is written, and on
// reading the value goes back on the mark, which its mirror field follows.
template <class Io>
void Mark_Only(Io& io, int16_t& mirror, MenuItem& item) {
    if constexpr (Io::kReading) {
        io.Integer(mirror);
        item.SetChecked(mirror != 0);
        mirror = Flag(item.Checked());
    } else {
        int16_t v = Flag(item.Checked());
        io.Integer(v);
    }
}

// A named setting shown by a check mark: the setting is written.
template <class Io>
void Setting_With_Mark(Io& io, int16_t& setting, MenuItem& item) {
    io.Integer(setting);
    if constexpr (Io::kReading) item.SetChecked(setting != 0);
}

// Checks entry `index` of a menu array and unchecks the others; an index
// outside the array is a fault of the record.
template <class Io>
void CheckEntry(Io& io, MenuSet& menus, const char* name, int count, int index) {
    for (int i = 0; i < count; ++i) menus(name, i).SetChecked(false);
    if (index >= 0 && index < count) menus(name, index).SetChecked(true);
    else io.Fault();
}

int16_t CountOf(int count, bool& clipped) {
    clipped = count > std::numeric_limits<int16_t>::max();
    return static_cast<int16_t>(std::min<int>(count, std::numeric_limits<int16_t>::max()));
}

// The file's order, once for both directions; the numbers behind are the
// record numbers.
template <class Io>
void Exchange(Io& io, AppContext& ctx) {
    constexpr bool reading = Io::kReading;
    Form1& f = ctx.form1;
    Settings& s = ctx.settings;
    MenuSet& m = f.Menus;

    io.Integer(s.Volume_Step);     // 1
    io.Integer(s.Random_Order);    // 2: its marks are set after the last record
    io.Integer(s.Preview_Active);  // 3
    if constexpr (reading) {
        m("MnuMorePreview_Active").SetChecked(s.Preview_Active != 0);
        m("MnuMoreDuration").SetEnabled(s.Preview_Active == -1);
        m("MnuMoreMultiPreview").SetEnabled(s.Preview_Active == -1);
    }
    io.Integer(s.Preview_Seconds);  // 4
    if constexpr (reading) {
        if (s.Preview_Seconds < 2) s.Preview_Seconds = 10;
    }
    Mark_Only(io, s.Multi_Preview, m("MnuMoreMultiPreview"));  // 5
    if constexpr (reading) s.Preview_Points.assign(s.Multi_Preview == -1 ? 4 : 1, 0);
    if constexpr (reading) {
        // 6 is written as an Integer and read back as a Long that nobody
        // keeps, so Search_Subfolders never returns from the file.
        int32_t dropped = 0;
        io.Long(dropped);
    } else {
        io.Integer(s.Search_Subfolders);
    }
    io.Integer(s.Replay_Mode);  // 7
    if constexpr (reading) {
        if (s.Replay_Mode >= 0 && s.Replay_Mode < 3) m("mnumorereplayn", s.Replay_Mode).SetChecked(true);
        else io.Fault();
    }
    io.Long(s.Shutdown_Armed);  // 8
    for (int i = 0; i < 3; ++i) {  // 9 to 14
        io.Long(s.Trigger_Time[i]);
        io.Long(s.Trigger_Countdown[i]);
    }
    io.Long(s.Trigger_Mode);       // 15
    io.Text(s.Trigger_Date);       // 16
    io.Integer(s.Window_Visible);  // 17
    io.Integer(s.Backtrack_Steps);  // 18
    if constexpr (reading) f.Text3.SetText(std::to_string(s.Backtrack_Steps));
    Setting_With_Mark(io, s.Sound_On, m("MnuMoreSound"));  // 19
    io.Integer(s.Pause_Seconds);                  // 20
    Mark_Only(io, s.Pause_Active, m("MnuMorePauseActive"));  // 21
    if constexpr (reading) m("MnuMorePauseDur").SetEnabled(s.Pause_Active == -1);
    Mark_Only(io, s.Report_On, m("MnuMoreReport"));  // 22
    Mark_Only(io, s.Auto_Rating, m("MnuFavorAuto2"));  // 23
    if constexpr (reading) f.Tray("TrayFavorAuto").SetChecked(s.Auto_Rating != 0);
    Setting_With_Mark(io, s.Recycle_Deleted, m("mnufiledeleterecycle"));  // 24
    Setting_With_Mark(io, s.Delete_From_Disk, m("mnufiledeletedisk"));    // 25
    if constexpr (reading) m("mnufiledeleterecycle").SetEnabled(s.Delete_From_Disk == -1);
    Setting_With_Mark(io, s.Auto_Start, m("MnuMoreAutoStart"));  // 26

    io.Integer(s.Search_Count);  // 27, then the links 0 to Search_Count
    if constexpr (reading) {
        if (s.Search_Count >= 0) {
            s.Search_Links.assign(static_cast<size_t>(s.Search_Count) + 1, std::string());
        } else {
            s.Search_Links.clear();
            io.Fault();
        }
    }
    for (int i = 0; i <= s.Search_Count; ++i) {
        if constexpr (reading) {
            io.Text(s.Search_Links[static_cast<size_t>(i)]);
        } else {
            std::string link = static_cast<size_t>(i) < s.Search_Links.size() ? s.Search_Links[i] : std::string();
            io.Text(link);
        }
    }

    io.Integer(s.Always_On_Top);
    if constexpr (reading) {
        if (s.Always_On_Top == -1) {
            // The on-top toggle starts from an unchecked mark and sets the value again.
            s.Always_On_Top = 0;
            f.Tray("MnuSystemTrayTop").SetChecked(true);
            m("MnuMoreOnTop").SetChecked(true);
            ctx.ports.shell.SetAlwaysOnTop("Form1", true);
            s.Always_On_Top = -1;
        }
    }
    Mark_Only(io, s.Report_On, m("MnuMoreReport"));  // the same mark once more
    Setting_With_Mark(io, s.Demand_Favor, m("MnuMoreDemandFavor"));

    bool clipped = false;
    int16_t n = reading ? 0 : CountOf(f.List1.ListCount(), clipped);
    if (clipped) io.Fault();
    io.Integer(n);
    for (int i = 0; i < n; ++i) {
        std::string item = reading ? std::string() : std::string(f.List1.List(i));
        if (!io.Text(item)) continue;
        if constexpr (reading) {
            if (i < f.List1.ListCount()) f.List1.SetList(i, std::move(item));
            else f.List1.AddItem(std::move(item));
        }
    }

    Mark_Only(io, s.Delete_On_Disk_Error, m("mnufiledeleteevendiskerror"));
    io.Integer(s.Video_Height);
    io.Integer(s.Video_Width);
    Setting_With_Mark(io, s.Save_Auto, m("mnuFileSaveAsAuto"));
    Setting_With_Mark(io, s.Read_Ratings, m("MnuMoreFileSizesReadRatings"));
    Setting_With_Mark(io, s.Keep_Ratings, m("MnuMoreFileSizesKeepRatings"));
    Setting_With_Mark(io, s.Favor_Within_Files, m("MnuMoreFavorWithinFiles"));
    Setting_With_Mark(io, s.Move_Points_To_New_Path, m("MnuFileMoveReference"));
    Setting_With_Mark(io, s.Copy_Points_To_New_Path, m("MnuFilecopyreference"));

    int16_t types = reading ? 0 : CountOf(f.List3.ListCount(), clipped);
    if (clipped) io.Fault();
    io.Integer(types);
    for (int i = 0; i < types; ++i) {
        int16_t selected = reading ? 0 : Flag(f.List3.Selected(i));
        if (!io.Integer(selected)) continue;
        if constexpr (reading) {
            if (i < f.List3.ListCount()) f.List3.SetSelected(i, selected != 0);
            else io.Fault();
        }
    }

    Setting_With_Mark(io, s.Filters_Load, m("MnuFiltersLoad"));
    io.Integer(s.Second_Player);
    io.Integer(s.Star_Colors_Index);
    if constexpr (reading) {
        if (s.Star_Colors_Index < 0) s.Star_Colors_Index = 0;
        CheckEntry(io, m, "MnumoreStar_Colors", 4, s.Star_Colors_Index);
    }
    Setting_With_Mark(io, s.Splash_Show, m("mnu_info2", 3));
    io.Integer(s.Star_Active);
    if constexpr (reading) {
        if (s.Star_Active == -1) {
            m("MnumoreStar_Active", 0).SetEnabled(false);
            m("MnumoreStar_Active", 1).SetChecked(true);
            // Turned, not set: the stars a fresh window shows go hidden.
            for (auto& star : f.Label21) star.SetVisible(!star.Visible());
        }
    }
    io.Byte(s.Autostart_Index);
    if constexpr (reading) CheckEntry(io, m, "MnuPlayAutoStartP", 3, s.Autostart_Index);
}

}  // namespace

std::string Settings_File(const AppContext& ctx) {
    return Folder_Path(ctx, kPreferencesFolder) + "default_pref.qr";
}

void Load_Settings(AppContext& ctx, bool& error) {
    error = false;
    Make_Folder(ctx, kPreferencesFolder);
    // The hourglass stays when there is nothing to read: the load of the
    // Collection, which always follows, puts the pointer back.
    ctx.form1.SetMousePointer(FormState::kHourglass);
    RecordFile file;
    // No file yet: the defaults stand, and that is no error. Something else
    // in its place (a folder, a pipe, which is never waited on) is.
    if (!file.Open(Settings_File(ctx), kSettingsRecordLength, RecordFile::Mode::ReadOnly)) {
        error = Resolve_File(Settings_File(ctx)).kind != FileKind::Missing;
        return;
    }

    RecordReader reader(file);
    Exchange(reader, ctx);
    file.Close();
    error = reader.Error();

    Form1& f = ctx.form1;
    const bool random = ctx.settings.Random_Order != 0;
    f.Menus("MnuMoreRandom").SetChecked(random);
    f.Tray("mnusystemtraysuffle").SetChecked(random);
    f.HScroll1.SetValue(20 * ctx.settings.Volume_Step);
    f.SetMousePointer(FormState::kDefaultPointer);
}

void Save_Settings(AppContext& ctx, bool& error) {
    error = false;
    ctx.core.Settings_Fault.clear();
    Make_Folder(ctx, kPreferencesFolder);
    const std::string path = Settings_File(ctx);
    // The file is built beside the old one and takes its place only once it
    // is whole on the disk: a full disk or a crash midway leaves the
    // preferences of the last save, never a file cut short.
    auto write = [&ctx](const std::string& to, std::string& fault) {
        RecordFile file;
        if (!file.Open(to, kSettingsRecordLength, RecordFile::Mode::Replace)) {
            fault = file.LastError();
            return false;
        }
        RecordWriter writer(file);
        Exchange(writer, ctx);
        // A value the file cannot hold is left out; the rest is saved all the same.
        const bool committed = file.Commit();
        if (!committed || writer.Error()) fault = committed ? writer.First_Error() : file.LastError();
        return committed && !writer.Error();
    };
    std::string fault;
    // A clean save renews the copy, written the same way; nothing ever reads it back.
    error = !write(path, fault) || !write(path + ".backup", fault);
    if (!error) return;
    ctx.core.Settings_Fault = path + ": " + fault;
    Log_Line(ctx, "-> Οι προτιμήσεις δεν σώθηκαν - The preferences could not be saved: " + ctx.core.Settings_Fault);
}

}  // namespace velmora
