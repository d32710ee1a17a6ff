#pragma once
// Reads a Collection's files straight from disk, without a running program:
// the header of the main file, the Tracks of the files side file one at a
// time (so a tool never holds the whole table), and the filter lists.

#include <array>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "base/currency.h"
#include "base/record_file.h"

namespace velmora::cli {

constexpr int kMainRecordLength = 300;
constexpr int kFilesRecordLength = 400;
constexpr int kFiltersRecordLength = 600;
constexpr int kRecordsPerTrack = 45;
constexpr int kFilterBoxes = 8;

// Records 1 to 19 of the main file, less the totals a reader drops.
struct Header {
    std::string Version_String;
    std::string Drive;
    std::string Dir;
    int32_t Current_Track = 0;
    int32_t Current_Position = 0;
    int32_t Track_Count = 0;
    int16_t Video_Mode = 0;
    std::string Alarm_File;
    std::array<int16_t, 6> Class_Play{};
    int32_t Played_Count = 0;
    int32_t Played_High = 0;
};

// The stored columns of one Track.
struct TrackRecord {
    int32_t Played_Number = 0;
    Currency Duration;
    int16_t Rating_Class = 0;
    Currency File_Size;
    Currency Stop_Position;
    int16_t Bitrate = 0;
    std::string Artist, Genre, Album, Title, Year, Track_Path;
    bool Identified = false;
    std::array<int16_t, 16> Slot_Value{};
    std::array<std::string, 16> Slot_Text;
};

struct FilterLists {
    std::array<std::vector<std::string>, kFilterBoxes> Boxes;  // Combo4_0 index 1 to 8
    std::vector<std::string> List5;
};

// The files a load of this main file reads: each side file under whichever
// spelling of its suffix exists, and the newer files of a committed save that
// a crash cut short. filters is empty when the main file lies below no
// velmora_sylloges folder, as there is then no filter folder to look in.
struct CollectionFiles {
    std::string main, files, filters;
};
CollectionFiles Files_Of(const std::string& main_path);

// On failure these return false with a message naming the file and record.
// The header of an empty or foreign-version file holds its version text alone.
bool Read_Header(const std::string& main_path, Header& header, std::string& error);
// Read_Header for the commands: a failure or a foreign version is told on
// err, and the answer is false.
bool Read_Current_Header(const std::string& main_path, Header& header, std::ostream& err);

// Streams the Tracks of an open files side file, one record at a time.
class TrackStream {
public:
    bool Open(const std::string& path, std::string& error);
    // Reads Track `index` (from 0) into `track`, overwriting every column.
    bool Read(int32_t index, TrackRecord& track, std::string& error);

private:
    RecordFile m_file;
    std::string m_path;
};

// Reads what it can; on failure the lists hold what was read before it.
bool Read_Filters(const std::string& path, FilterLists& lists, std::string& error);

}  // namespace velmora::cli
