// The files side file: the TrackTable, a fixed run of records per Track.
#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "base/record_file.h"
#include "collection/collection_file.h"
#include "collection/stored_collection.h"
#include "core/app_context.h"
#include "core/progress.h"

namespace velmora {

namespace {

// Progress of the files reader and writer: every 40th row and the last 50.
bool Progress_Due(int64_t row, int64_t total) { return row % 40 == 0 || total - row < 50; }

void Append(ListBox& list, std::vector<std::string> rows) {
    if (rows.empty()) return;
    if (list.ListCount() == 0) {
        list.Assign(std::move(rows));
        return;
    }
    std::vector<std::string> items = list.Items();
    items.insert(items.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
    list.Assign(std::move(items));
}

// Row i's records read into its columns. The path goes to `path_text`
// rather than to a column: its column is the list box. What was read before
// a record that cannot be read stays in the columns.
bool Read_Row(RecordFile& file, TrackTable& t, int32_t i, std::string& path_text) {
    StoredTrack s;
    const bool ok = Read_Track(file, i, s);
    t.Played_Number[i] = s.Played_Number, t.Duration[i] = s.Duration, t.Rating_Class[i] = s.Rating_Class;
    t.File_Size[i] = s.File_Size, t.Stop_Position[i] = s.Stop_Position, t.Bitrate[i] = s.Bitrate;
    t.Artist[i] = std::move(s.Artist), t.Genre[i] = std::move(s.Genre), t.Album[i] = std::move(s.Album);
    t.Title[i] = std::move(s.Title), t.Year[i] = std::move(s.Year), path_text = std::move(s.Track_Path);
    t.Identified[i] = s.Identified;
    t.Slot_Value[i] = s.Slot_Value;
    for (int j = 0; j < kSlotCount; ++j) t.Slot_Text[i].Set(j, s.Slot_Text[j]);
    return ok;
}

// The list rows of the Tracks read: List2 and the five mirrors.
using ListRows = std::array<std::vector<std::string>, 6>;

// Reads the rows one by one into the columns and the list rows; false when
// a read failed or a row's class has no total, which ends the reading there.
bool Read_Rows(AppContext& ctx, RecordFile& file, ListRows& rows, int32_t& played, int32_t& read) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    const int32_t total = t.Track_Count;
    std::string path_text;
    for (int32_t i = 0; i < total; ++i) {
        // Giving way to events may have let a handler reshape the table.
        if (i > t.Bound()) return false;
        path_text.clear();
        if (!Read_Row(file, t, i, path_text)) return false;
        t.Saved[i] = true;
        t.Total_Duration += t.Duration[i];

        // A row with no path stays in the columns but gets no list row.
        if (!path_text.empty() && path_text != " ") {
            // A class with no total ends the reading before its row is
            // listed: listed, it would be saved back as it is, and the
            // Collection would be read in part at every start.
            const int rc = t.Rating_Class[i];
            if (rc < 0 || rc >= kClassCount) return false;
            rows[0].push_back(path_text);
            rows[1].push_back(Row_Number_Text(i));
            rows[2].push_back(Class_Letter(t.Rating_Class[i]));
            rows[3].push_back(Duration_Text(t.Duration[i]));
            rows[4].push_back(Size_Text(t.File_Size[i]));
            rows[5].push_back(Bitrate_Text(t.Bitrate[i]));
            t.Total_Size += t.File_Size[i];
            t.Class_Count[rc] += Currency(1);
            t.Class_Size[rc] += t.File_Size[i];
            t.Class_Duration[rc] += t.Duration[i];
        }

        if (t.Played_Number[i] > t.Played_High) t.Played_High = t.Played_Number[i];
        if (t.Played_Number[i] != 0) ++played;
        ++read;
        ctx.ports.loop.DoEvents();
        if (Progress_Due(i, total)) Show_Progress(f, i, total, 1);
    }
    return true;
}

}  // namespace

void Load_Files(AppContext& ctx, const std::string& path, bool& error) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    RecordFile file;
    if (!file.Open(path, kFilesRecordLength, RecordFile::Mode::ReadOnly)) {
        error = true;
        return;
    }

    ListRows rows;
    for (auto& list : rows) list.reserve(static_cast<size_t>(std::max(t.Track_Count, 0)));
    int32_t played = 0;
    int32_t read = 0;
    const bool complete = Read_Rows(ctx, file, rows, played, read);
    // The rows go to the lists in one piece, however the reading ended: the
    // Tracks read so far stay. Appending row by row would keep each list's
    // find index up to date 32,766 times over, for lists that are disabled
    // while they fill anyway.
    Append(f.List2, std::move(rows[0]));
    for (int k = 0; k < 5; ++k) Append(f.List3_0[k], std::move(rows[k + 1]));
    if (!complete) {
        error = true;
        return;
    }

    if (played != t.Played_High) Renumber_Played(t);
    if (read == 0) return;
    if (t.Current_Track > read) t.Current_Track = read;
    const int list_count = f.List2.ListCount();
    if (t.Track_Count != list_count) {
        t.Track_Count = list_count;
        // Rows without a path were left out of the list; with none left the
        // walk stands at row 0, as after a reset, not before the first row.
        if (t.Current_Track > list_count - 1) t.Current_Track = std::max(list_count - 1, 0);
    } else if (t.Current_Track < 0 || t.Current_Track >= list_count) {
        // The list has no such row to select.
        error = true;
    } else {
        f.List2.SetListIndex(t.Current_Track);
        for (ListBox& mirror : f.List3_0) mirror.SetListIndex(t.Current_Track);
    }
}

void Write_Files(AppContext& ctx, const std::string& path, bool& error, bool* disk_failed, Flush flush) {
    namespace r = track_record;
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    RecordFile file;
    bool failed = false;
    auto disk_error = [&] {
        error = true;
        failed = true;
        if (disk_failed) *disk_failed = true;
    };
    if (!file.Open(path, kFilesRecordLength)) {
        disk_error();
        return;
    }

    const int32_t total = std::min(t.Track_Count, t.Bound());
    std::vector<int32_t> written;
    for (int32_t i = 0; i < total; ++i) {
        if (!t.Saved[i]) {
            written.push_back(i);
            auto at = [i](int64_t field) { return Track_Record(i, field); };
            // Each field on its own: one that cannot be stored is counted and
            // the rest of the row still goes to the disk.
            bool ok = file.PutLong(at(r::kPlayedNumber), t.Played_Number[i]);
            ok &= file.PutCurrency(at(r::kDuration), t.Duration[i]);
            ok &= file.PutInteger(at(r::kRatingClass), t.Rating_Class[i]);
            ok &= file.PutCurrency(at(r::kFileSize), t.File_Size[i]);
            ok &= file.PutCurrency(at(r::kStopPosition), t.Stop_Position[i]);
            ok &= file.PutInteger(at(r::kBitrate), t.Bitrate[i]);
            ok &= file.PutString(at(r::kArtist), t.Artist[i]);
            ok &= file.PutString(at(r::kGenre), t.Genre[i]);
            ok &= file.PutString(at(r::kAlbum), t.Album[i]);
            ok &= file.PutString(at(r::kTitle), t.Title[i]);
            ok &= file.PutString(at(r::kYear), t.Year[i]);
            ok &= file.PutString(at(r::kTrackPath), f.List2.List(i));
            ok &= file.PutBoolean(at(r::kIdentified), t.Identified[i]);
            t.Saved[i] = true;
            for (int j = 0; j < kSlotCount; ++j) {
                ok &= file.PutInteger(at(r::Slot_Value(j)), t.Slot_Value[i][j]);
                ok &= file.PutString(at(r::Slot_Text(j)), t.Slot_Text[i][j]);
            }
            if (!ok) error = true;
        }
        if (Progress_Due(i, total)) Show_Progress(f, i, total, 1);
    }
    // Nothing is reported as saved before it is on the disk.
    if (file.WriteFailed() || !(flush == Flush::Later ? file.WriteOut() : file.Sync())) disk_error();
    if (!file.Close()) disk_error();
    // Rows that did not reach the disk are still to be saved.
    if (failed)
        for (int32_t i : written) t.Saved[i] = false;
}

}  // namespace velmora
