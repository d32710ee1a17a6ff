#pragma once
// The reading half of the load: a Collection's records read, as they are
// stored, into plain values, with no program around them. The load takes
// these values into the table and the window; velmora-cli prints them.

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "base/collection_records.h"
#include "base/currency.h"
#include "base/record_file.h"

namespace velmora {

// What a reading could not take: the records that failed, how many reads
// failed, and the file's message about the first of them.
struct ReadFaults {
    uint64_t records = 0;  // bit r for record r
    int count = 0;
    std::string first;

    bool Any() const { return records != 0; }
    bool Has(int64_t record) const { return (records >> record & 1) != 0; }
    // Notes a failed read of `record`; ok passes through.
    bool Note(bool ok, int64_t record, const RecordFile& file);
};

// The header of the main file up to Played_High, less the totals that a
// reader drops.
struct StoredHeader {
    std::string Version_String;
    std::string Drive;
    std::string Dir;
    int32_t Current_Track = 0;
    int32_t Current_Position = 0;
    int32_t Track_Count = 0;
    int16_t Video_Mode = 0;
    std::string Alarm_File;
    std::array<int16_t, main_record::kClasses> Class_Play{};
    int32_t Played_Count = 0;
    int32_t Played_High = 0;
};

// The version text, the first record of an open main file: empty for a file
// created and never written. False when the record cannot be read.
bool Read_Version(RecordFile& main, StoredHeader& h);

// The header behind the version, for a file of this program's version. A
// field that cannot be read keeps the value it had in h, and the reading goes
// on with the next: one damaged text does not cost the numbers behind it.
ReadFaults Read_Header(RecordFile& main, StoredHeader& h);

// The stored columns of one Track.
struct StoredTrack {
    int32_t Played_Number = 0;
    Currency Duration;
    int16_t Rating_Class = 0;
    Currency File_Size;
    Currency Stop_Position;
    int16_t Bitrate = 0;
    std::string Artist, Genre, Album, Title, Year;
    std::string Track_Path;
    bool Identified = false;
    std::array<int16_t, kSlotCount> Slot_Value{};
    std::array<std::string, kSlotCount> Slot_Text;
};

// Track i (from 0) of an open files side file. False at the first record
// that cannot be read: the fields before it hold what was read, the rest
// what they held.
bool Read_Track(RecordFile& files, int32_t i, StoredTrack& t);

// A Track with no path text (empty or one blank) names no file: the load
// leaves it out, and the Tracks behind it keep their own fields.
bool Is_Pathless(const std::string& path_text);

// What keeps a stored Collection from being read whole, in the words that
// the load's log, add and identify (which refuse it), dump and info all use;
// empty when nothing does.
// "Track i: " and what went wrong with Track i (from 0), as a message of the
// files side file: one that could not be read, or written.
std::string Track_Message(int32_t i, const std::string& what);
// Track i as read: a class outside the six, or a path holding bytes code
// page 1253 does not define, which could never be written back. A pathless
// Track has no fault: it is left out.
std::string Track_Fault(int32_t i, const StoredTrack& t);
// The header: a Current_Track beyond the last Track.
std::string Header_Fault(const StoredHeader& h);

// The counts at the head of the filters side file: the items of value boxes
// 0 to 7, then the upper index of the filter rows. A count that cannot be
// read stays 0; an upper index below -1 is a fault too.
using FilterCounts = std::array<int16_t, filter_record::kValueBoxes + 1>;
ReadFaults Read_Filter_Counts(RecordFile& file, FilterCounts& counts);

// The items behind the counts, in the file's order: each box's, then the
// upper index + 1 filter rows. `item(list, index, text)` takes each one,
// list 0 to 7 a box and 8 the rows, with text null where its record cannot
// be read; there the reading goes on, but it stops at the end of the file.
using FilterItem = std::function<void(int list, int index, const std::string* text)>;
ReadFaults Read_Filter_Items(RecordFile& file, const FilterCounts& counts, const FilterItem& item);

// The bytes the filter rows behind the counts take in UTF-8, as far as the
// file holds their records whole and their texts fit: the room to take for
// them before they are read. Reports nothing; the reading finds any fault.
size_t Filter_Rows_Length(RecordFile& file, const FilterCounts& counts);

}  // namespace velmora
