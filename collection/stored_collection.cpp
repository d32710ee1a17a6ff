#include "collection/stored_collection.h"

#include <algorithm>

#include "base/codepage1253.h"
#include "base/record_span.h"

namespace velmora {

namespace {

// The read of each field form, chosen by the type it reads into.
bool Get(RecordFile& f, int64_t record, std::string& v) { return f.GetString(record, v); }
bool Get(RecordFile& f, int64_t record, int16_t& v) { return f.GetInteger(record, v); }
bool Get(RecordFile& f, int64_t record, int32_t& v) { return f.GetLong(record, v); }
bool Get(RecordFile& f, int64_t record, Currency& v) { return f.GetCurrency(record, v); }

}  // namespace

bool ReadFaults::Note(bool ok, int64_t record, const RecordFile& file) {
    if (ok) return true;
    if (!Any()) first = file.LastError();
    ++count;
    records |= uint64_t{1} << std::min<int64_t>(record, 63);  // records past 63 share the last bit
    return false;
}

bool Read_Version(RecordFile& main, StoredHeader& h) {
    h.Version_String.clear();
    return main.RecordCount() == 0 || main.GetString(main_record::kVersion, h.Version_String);
}

ReadFaults Read_Header(RecordFile& main, StoredHeader& h) {
    namespace r = main_record;
    ReadFaults faults;
    // A failed read leaves its field as it was.
    auto read = [&](int64_t record, auto& to) { faults.Note(Get(main, record, to), record, main); };
    read(r::kDrive, h.Drive);
    read(r::kDir, h.Dir);
    read(r::kCurrentTrack, h.Current_Track);
    read(r::kCurrentPosition, h.Current_Position);
    read(r::kTrackCount, h.Track_Count);
    read(r::kVideoMode, h.Video_Mode);
    Currency dropped;
    for (int64_t record : {r::kTotalDuration, r::kPlayedDuration, r::kPlayedNow}) read(record, dropped);
    read(r::kAlarmFile, h.Alarm_File);
    for (int k = 0; k < r::kClasses; ++k) read(r::kClassPlay + k, h.Class_Play[k]);
    read(r::kPlayedCount, h.Played_Count);
    read(r::kPlayedHigh, h.Played_High);
    return faults;
}

namespace {

// Track i from its records read at once, when the file holds them all and
// every text fits its record: the common case, with no check per field.
// False, with t untouched, when anything is amiss; the field-by-field read
// then finds the record at fault and says so in the file's words.
bool Read_Whole_Track(RecordFile& f, int32_t i, StoredTrack& t) {
    namespace r = track_record;
    const char* bytes = f.WholeRecords(Track_Record(i, 1), kRecordsPerTrack);
    if (!bytes) return false;
    const RecordSpan span(bytes, f.RecordLength());
    for (int64_t text : {r::kArtist, r::kGenre, r::kAlbum, r::kTitle, r::kYear, r::kTrackPath})
        if (!span.TextFits(text)) return false;
    for (int j = 0; j < kSlotCount; ++j)
        if (!span.TextFits(r::Slot_Text(j))) return false;
    t.Played_Number = span.Long(r::kPlayedNumber);
    t.Duration = span.CurrencyAt(r::kDuration);
    t.Rating_Class = span.Integer(r::kRatingClass);
    t.File_Size = span.CurrencyAt(r::kFileSize);
    t.Stop_Position = span.CurrencyAt(r::kStopPosition);
    t.Bitrate = span.Integer(r::kBitrate);
    span.Text(r::kArtist, t.Artist);
    span.Text(r::kGenre, t.Genre);
    span.Text(r::kAlbum, t.Album);
    span.Text(r::kTitle, t.Title);
    span.Text(r::kYear, t.Year);
    span.Text(r::kTrackPath, t.Track_Path);
    t.Identified = span.Boolean(r::kIdentified);
    for (int j = 0; j < kSlotCount; ++j) {
        t.Slot_Value[j] = span.Integer(r::Slot_Value(j));
        span.Text(r::Slot_Text(j), t.Slot_Text[j]);
    }
    return true;
}

}  // namespace

bool Read_Track(RecordFile& f, int32_t i, StoredTrack& t) {
    if (Read_Whole_Track(f, i, t)) return true;
    namespace r = track_record;
    auto at = [i](int64_t field) { return Track_Record(i, field); };
    bool ok = f.GetLong(at(r::kPlayedNumber), t.Played_Number) && f.GetCurrency(at(r::kDuration), t.Duration) &&
              f.GetInteger(at(r::kRatingClass), t.Rating_Class) && f.GetCurrency(at(r::kFileSize), t.File_Size) &&
              f.GetCurrency(at(r::kStopPosition), t.Stop_Position) && f.GetInteger(at(r::kBitrate), t.Bitrate) &&
              f.GetString(at(r::kArtist), t.Artist) && f.GetString(at(r::kGenre), t.Genre) &&
              f.GetString(at(r::kAlbum), t.Album) && f.GetString(at(r::kTitle), t.Title) &&
              f.GetString(at(r::kYear), t.Year) && f.GetString(at(r::kTrackPath), t.Track_Path) &&
              f.GetBoolean(at(r::kIdentified), t.Identified);
    for (int j = 0; ok && j < kSlotCount; ++j)
        ok = f.GetInteger(at(r::Slot_Value(j)), t.Slot_Value[j]) && f.GetString(at(r::Slot_Text(j)), t.Slot_Text[j]);
    return ok;
}

bool Is_Pathless(const std::string& path_text) { return path_text.empty() || path_text == " "; }

std::string Track_Message(int32_t i, const std::string& what) { return "Track " + std::to_string(i) + ": " + what; }

std::string Track_Fault(int32_t i, const StoredTrack& t) {
    if (Is_Pathless(t.Track_Path)) return {};
    if (t.Rating_Class < 0 || t.Rating_Class >= main_record::kClasses)
        return Track_Message(i, "Rating_Class " + std::to_string(t.Rating_Class) + " is out of range 0 to " +
                                       std::to_string(main_record::kClasses - 1));
    if (HasUnassignedCp1253(t.Track_Path))
        return Track_Message(i, "the path holds bytes code page 1253 does not define");
    return {};
}

std::string Header_Fault(const StoredHeader& h) {
    if (h.Track_Count < 1 || h.Current_Track < h.Track_Count) return {};
    return "Current_Track " + std::to_string(h.Current_Track) + " is out of range 0 to " +
           std::to_string(h.Track_Count - 1);
}

ReadFaults Read_Filter_Counts(RecordFile& file, FilterCounts& counts) {
    namespace r = filter_record;
    ReadFaults faults;
    for (int k = 0; k < r::kValueBoxes; ++k) faults.Note(Get(file, r::Box_Count(k), counts[k]), r::Box_Count(k), file);
    int16_t& upper = counts[r::kValueBoxes];
    // The rows' count less one: below -1 it is no count at all.
    if (faults.Note(Get(file, r::kRowsUpper, upper), r::kRowsUpper, file) && upper < -1) {
        if (!faults.Any()) faults.first = "record " + std::to_string(r::kRowsUpper) + ": an upper index below -1";
        faults.records |= uint64_t{1} << r::kRowsUpper;
    }
    return faults;
}

ReadFaults Read_Filter_Items(RecordFile& file, const FilterCounts& counts, const FilterItem& item) {
    ReadFaults faults;
    const int64_t records = file.RecordCount();
    int64_t record = filter_record::kFirstItem;
    std::string text;
    auto next = [&](int list, int index) {
        if (record > records) {
            // Past the end of the file no later record can be read either.
            faults.Note(file.GetString(record, text), record, file);
            return false;
        }
        const bool ok = faults.Note(file.GetString(record, text), record, file);
        ++record;
        item(list, index, ok ? &text : nullptr);
        return true;
    };
    for (int k = 0; k < filter_record::kValueBoxes; ++k)
        for (int j = 0; j < counts[k]; ++j)
            if (!next(k, j)) return faults;
    const int upper = counts[filter_record::kValueBoxes];
    for (int j = 0; j <= upper; ++j)
        if (!next(filter_record::kValueBoxes, j)) return faults;
    return faults;
}

size_t Filter_Rows_Length(RecordFile& file, const FilterCounts& counts) {
    int64_t record = filter_record::kFirstItem;
    for (int k = 0; k < filter_record::kValueBoxes; ++k) record += std::max<int16_t>(counts[k], 0);
    const int64_t end = std::min(record + counts[filter_record::kValueBoxes] + 1, file.RecordCount() + 1);
    // A window's worth of records at a time.
    constexpr int64_t kRun = 1024;
    size_t bytes = 0;
    while (record < end) {
        const int64_t run = std::min(kRun, end - record);
        const char* whole = file.WholeRecords(record, run);
        if (!whole) break;
        const RecordSpan span(whole, file.RecordLength());
        for (int64_t r = 1; r <= run; ++r)
            if (span.TextFits(r)) bytes += span.TextLength(r);
        record += run;
    }
    return bytes;
}

}  // namespace velmora
