#pragma once
// The record layout of a Collection's files and the names they go by. This is
// the one place that says which field lies in which record: the writer, the
// load and velmora-cli all count their records from here.
//
// Every file is of fixed-length records numbered from 1, one field at the
// start of a record (base/record_file.h gives the field forms).

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/slot_texts.h"

namespace velmora {

// The main file (.qel): the walk's state and the header.
constexpr int kMainRecordLength = 300;
// The files side file: the Track table, 45 records per Track.
constexpr int kFilesRecordLength = 400;
// The longest text a record of the files side file holds, in bytes of code
// page 1253: one a character.
constexpr int kFilesTextBytes = kFilesRecordLength - 2;
// The most bytes such a text takes in UTF-8: three a character at most.
constexpr size_t kLongestUtf8Text = 3 * kFilesTextBytes;
// The filters side file: the catalogue's value lists and filter rows.
constexpr int kFiltersRecordLength = 600;

inline constexpr char kCollectionVersion[] = "5.0";

// Record numbers of the main file.
namespace main_record {
constexpr int64_t kVersion = 1;
constexpr int64_t kDrive = 2;
constexpr int64_t kDir = 3;
constexpr int64_t kCurrentTrack = 4;
constexpr int64_t kCurrentPosition = 5;
constexpr int64_t kTrackCount = 6;
constexpr int64_t kVideoMode = 7;
// 8 to 10 are written and read back only to be dropped.
constexpr int64_t kTotalDuration = 8;
constexpr int64_t kPlayedDuration = 9;
constexpr int64_t kPlayedNow = 10;
constexpr int64_t kAlarmFile = 11;
// One record per class, 0 to 5.
constexpr int64_t kClassPlay = 12;
constexpr int kClasses = 6;
constexpr int64_t kPlayedCount = 18;
constexpr int64_t kPlayedHigh = 19;
// 20 to 28 are written only; nothing reads them back.
constexpr int64_t kPlayedClassDuration = 20;
constexpr int64_t kPlayedClassNow = 21;
constexpr int64_t kClassTimeLeft = 22;
// The save counter is written here and the first class duration at once
// over it, so the file ends with the Currency there.
constexpr int64_t kSaveCounter = 23;
constexpr int64_t kClassDuration = 23;
constexpr int64_t kLast = kClassDuration + kClasses - 1;
}  // namespace main_record

// Record numbers within one Track of the files side file; Track i (from 0)
// takes records kRecordsPerTrack * i + 1 to kRecordsPerTrack * (i + 1).
namespace track_record {
constexpr int64_t kPlayedNumber = 1;
constexpr int64_t kDuration = 2;
constexpr int64_t kRatingClass = 3;
constexpr int64_t kFileSize = 4;
constexpr int64_t kStopPosition = 5;
constexpr int64_t kBitrate = 6;
constexpr int64_t kArtist = 7;
constexpr int64_t kGenre = 8;
constexpr int64_t kAlbum = 9;
constexpr int64_t kTitle = 10;
constexpr int64_t kYear = 11;
constexpr int64_t kTrackPath = 12;  // the item text of List2
constexpr int64_t kIdentified = 13;
// Slot j's value and text stand in pairs behind the fixed fields.
constexpr int64_t Slot_Value(int j) { return 14 + 2 * j; }
constexpr int64_t Slot_Text(int j) { return 15 + 2 * j; }
}  // namespace track_record

constexpr int kRecordsPerTrack = static_cast<int>(track_record::Slot_Text(kSlotCount - 1));

// The number of record `field` (a track_record number) of Track i.
constexpr int64_t Track_Record(int32_t i, int64_t field) { return int64_t{kRecordsPerTrack} * i + field; }

// The filters side file, written and read in sequence: the item counts of
// the value boxes, then the upper index of the filter rows (their count less
// one), then every box's items in turn and the rows behind them.
namespace filter_record {
constexpr int kValueBoxes = 8;
constexpr int64_t Box_Count(int box) { return 1 + box; }  // box 0 to 7
constexpr int64_t kRowsUpper = kValueBoxes + 1;
constexpr int64_t kFirstItem = kRowsUpper + 1;
}  // namespace filter_record

// The folders below the program folder that hold the Collections and their
// filter files, and the names of the files in them.
inline constexpr char kCollectionsFolder[] = "velmora_sylloges";
inline constexpr char kFiltersFolder[] = "velmora_filtra";
inline constexpr char kPointerFileName[] = "default.qr";
inline constexpr char kDefaultCollectionName[] = "velmora.qel";

// The side files of a main file. The writer spells their suffixes
// "_files.qqel" and "_filters.qqel", the load "_Files.qqel" and
// "_Filters.qqel"; on a file system that tells case apart both are looked for.
struct SideFileNames {
    std::string files, filters;
    std::string files_other, filters_other;  // the load's spelling
};

// The files side file lies beside the main file; the filters side file in
// the filter folder of the program folder that the main file lies in (the
// path before its "velmora_sylloges/"), or of `program_folder` when it lies
// in none. Both take the main file's name less its extension (4 characters).
// With no such folder and `program_folder` empty, `filters` is empty.
SideFileNames Side_File_Names(const std::string& main_path, const std::string& program_folder);

// Whether a Track's path can be stored as it is: every character in code
// page 1253 and short enough for its record. Intake takes no other.
bool Storable_Track_Path(std::string_view utf8);

// The ".backup" copy a save makes of each file every few saves.
std::string Backup_Path(const std::string& file);

}  // namespace velmora
