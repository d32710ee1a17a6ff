// The files side file: the TrackTable, a fixed run of records per Track.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/codepage1253.h"
#include "base/record_file.h"
#include "collection/collection_file.h"
#include "collection/stored_collection.h"
#include "core/app_context.h"
#include "core/progress.h"
#include "core/running_report.h"

namespace velmora {

namespace {

// Progress of the files reader and writer: every 40th row and the last 50.
bool Progress_Due(int64_t row, int64_t total) { return row % 40 == 0 || total - row < 50; }

void Append(ListBox& list, PackedTexts rows) {
    if (rows.empty()) return;
    if (list.ListCount() == 0) {
        list.Assign(std::move(rows));
        return;
    }
    PackedTexts items = list.Items();
    items.append(rows);
    list.Assign(std::move(items));
}

// A byte code page 1253 leaves undefined reads as a character the writer
// refuses: in a text beside the path it is taken as '?', so that saving the
// Track again neither fails nor empties the whole text.
std::string& Writable(std::string& text) {
    if (text.size() < kUnassignedCp1253.size()) return text;  // most slot texts: "0" or nothing
    for (size_t at = text.find(kUnassignedCp1253); at != std::string::npos;
         at = text.find(kUnassignedCp1253, at + 1))
        text.replace(at, kUnassignedCp1253.size(), "?");
    return text;
}

// Track i as read into row `row` of the columns. The path stays in `s`:
// its column is the list box.
void Take_Row(TrackTable& t, int32_t row, StoredTrack& s) {
    t.Played_Number[row] = s.Played_Number, t.Duration[row] = s.Duration, t.Rating_Class[row] = s.Rating_Class;
    t.File_Size[row] = s.File_Size, t.Stop_Position[row] = s.Stop_Position, t.Bitrate[row] = s.Bitrate;
    t.Artist[row] = std::move(Writable(s.Artist)), t.Genre[row] = std::move(Writable(s.Genre));
    t.Album[row] = std::move(Writable(s.Album)), t.Title[row] = std::move(Writable(s.Title));
    t.Year[row] = std::move(Writable(s.Year));
    t.Identified[row] = s.Identified;
    t.Slot_Value[row] = s.Slot_Value;
    for (std::string& text : s.Slot_Text) Writable(text);
    t.Slot_Text[row].Assign(s.Slot_Text);
}

// The list rows of the Tracks read: List2 and the five mirrors.
using ListRows = std::array<PackedTexts, 6>;

// How the reading went: the rows kept, those of them played, and what the
// pathless Tracks left out did to the row of Current_Track.
struct RowsRead {
    int32_t kept = 0;
    int32_t played = 0;
    int32_t left_out = 0;
    int32_t left_out_before_current = 0;
    bool current_left_out = false;
    std::string fault;  // what ended the reading early; empty when it ran to the end
};

// Reads the Tracks one by one into the columns and the list rows. A Track
// with no path is left out, and each Track behind it moves up into the next
// free row with all of its own fields: a row is never shared by the fields
// of one Track and the path of another. A Track that cannot be read, or
// whose class or path the program cannot take, ends the reading there.
RowsRead Read_Rows(AppContext& ctx, RecordFile& file, ListRows& rows) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    const int32_t total = t.Track_Count;
    RowsRead r;
    // One Track's fields, read again and again: the path and the slot texts
    // keep their room from one Track to the next.
    StoredTrack s;
    for (int32_t i = 0; i < total; ++i) {
        const int32_t row = r.kept;
        // Giving way to events may have let a handler reshape the table.
        if (row > t.Bound()) {
            r.fault = Track_Message(i, "the table changed while it was read");
            return r;
        }
        if (!Read_Track(file, i, s)) {
            r.fault = Track_Message(i, file.LastError());
            return r;
        }
        if (Is_Pathless(s.Track_Path)) {
            ++r.left_out;
            if (i < t.Current_Track) ++r.left_out_before_current;
            if (i == t.Current_Track) r.current_left_out = true;
        } else {
            r.fault = Track_Fault(i, s);
            if (!r.fault.empty()) return r;
            Take_Row(t, row, s);
            // A Track that moved up stands one row further down on the disk.
            t.Saved[row] = row == i;
            t.Total_Duration += t.Duration[row];
            rows[0].push_back(s.Track_Path);
            rows[1].push_back(Row_Number_Text(row));
            rows[2].push_back(Class_Letter(t.Rating_Class[row]));
            rows[3].push_back(Duration_Text(t.Duration[row]));
            rows[4].push_back(Size_Text(t.File_Size[row]));
            rows[5].push_back(Bitrate_Text(t.Bitrate[row]));
            t.Total_Size += t.File_Size[row];
            const int rc = t.Rating_Class[row];
            t.Class_Count[rc] += Currency(1);
            t.Class_Size[rc] += t.File_Size[row];
            t.Class_Duration[rc] += t.Duration[row];
            if (t.Played_Number[row] > t.Played_High) t.Played_High = t.Played_Number[row];
            if (t.Played_Number[row] != 0) ++r.played;
            ++r.kept;
        }
        ctx.ports.loop.DoEvents();
        if (Progress_Due(i, total)) Show_Progress(f, i, total, 1);
    }
    return r;
}

}  // namespace

void Load_Files(AppContext& ctx, const std::string& path, bool& error) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    CollectionState& c = ctx.collection;
    RecordFile file;
    if (!file.Open(path, kFilesRecordLength, RecordFile::Mode::ReadOnly)) {
        error = true;
        c.Load_Fault = file.LastError();
        return;
    }

    ListRows rows;
    // Room for the longest texts the rows can hold, taken at once: a buffer
    // that doubled as it filled copied its bytes over and over, and each copy
    // touched fresh pages. Room never written costs no memory, and the
    // list keeps only what it holds (ListBox::Assign).
    const auto count = static_cast<size_t>(std::max(t.Track_Count, 0));
    rows[0].reserve(count, count * kLongestUtf8Text);
    // The mirrors: row number, class letter, time, size, bit rate.
    constexpr std::array<size_t, 5> kMirrorBytes = {5, 1, 8, 9, 3};
    for (int k = 0; k < 5; ++k) rows[k + 1].reserve(count, count * kMirrorBytes[k]);
    const RowsRead read = Read_Rows(ctx, file, rows);
    // The rows go to the lists in one piece, however the reading ended: the
    // Tracks read so far stay. Appending row by row would keep each list's
    // find index up to date 32,766 times over, for lists that are disabled
    // while they fill anyway.
    Append(f.List2, std::move(rows[0]));
    for (int k = 0; k < 5; ++k) Append(f.List3_0[k], std::move(rows[k + 1]));
    // The rows behind the last Track kept may hold a Track that moved up.
    for (int32_t row = read.kept; row <= t.Bound(); ++row) t.ClearRow(row);
    if (!read.fault.empty()) {
        error = true;
        c.Load_Fault = path + ": " + read.fault;
        return;
    }

    StoredHeader stored;
    stored.Current_Track = t.Current_Track, stored.Track_Count = t.Track_Count;
    if (const std::string fault = Header_Fault(stored); !fault.empty()) {
        // The list has no such row to select.
        error = true;
        c.Load_Fault = c.Collection_Path + ": " + fault;
        return;
    }
    // Current_Track follows its Track up; a Track left out hands it on to
    // the next one kept, from its start.
    t.Current_Track -= read.left_out_before_current;
    if (read.current_left_out) t.Current_Position = 0;
    t.Track_Count = read.kept;
    if (t.Current_Track > read.kept - 1) t.Current_Track = std::max(read.kept - 1, 0);
    if (read.left_out > 0)
        Log_Line(ctx, "-> Κομμάτια χωρίς διαδρομή παραλείφθηκαν - Tracks without a path left out: " +
                          std::to_string(read.left_out));

    if (read.played != t.Played_High) Renumber_Played(t);
    if (read.kept == 0) return;
    f.List2.SetListIndex(t.Current_Track);
    for (ListBox& mirror : f.List3_0) mirror.SetListIndex(t.Current_Track);
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
        Note_Save_Fault(ctx, path, file.LastError());
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
            if (!ok) {
                error = true;
                Note_Save_Fault(ctx, path, Track_Message(i, file.LastError()));
            }
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
