#pragma once
// The open Collection in memory: one row per Track, held as parallel columns
// indexed by the row number, which is also the row of the path list List2.
// There is no row object, so a total or a filter runs down one column alone.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/currency.h"
#include "base/slot_texts.h"

namespace velmora {

class ListBox;

// Rows a Collection can hold: the limit of a list box index.
constexpr int kMaxTracks = 32766;
constexpr int kClassCount = 6;  // 0 Unmarked, 1 X, 2 C, 3 B, 4 A, 5 S

extern const char* const kCapacityMessage;  // "Η παρούσα συλλογή ξεπερνά ..." head
std::string CapacityExceededText();          // the whole text of the refusal box
extern const char* const kIntakeFullMessage;

struct TrackTable {
    // Columns, each dimensioned 0..Track_Count: one spare element behind the last row.
    std::vector<int32_t> Played_Number;
    std::vector<Currency> Duration;
    std::vector<int16_t> Rating_Class;
    std::vector<Currency> File_Size;
    std::vector<Currency> Stop_Position;
    std::vector<int16_t> Bitrate;
    std::vector<std::string> Artist;
    std::vector<std::string> Genre;
    std::vector<std::string> Album;
    std::vector<std::string> Title;
    std::vector<std::string> Year;
    std::vector<bool> Identified;
    std::vector<std::array<int16_t, kSlotCount>> Slot_Value;
    std::vector<SlotTexts> Slot_Text;
    std::vector<bool> Saved;

    // Where the walk stands.
    int32_t Track_Count = 0;
    int32_t Current_Track = 0;
    int32_t Current_Position = 0;
    int32_t Played_Count = 0;
    int32_t Played_High = 0;
    int16_t Video_Mode = 0;
    std::array<int16_t, kClassCount> Class_Play{};
    int16_t Any_Class_Play = 0;
    int16_t Filters_Changed = 0;
    int16_t Collection_Saved = 0;
    int16_t Resume_Pending = 0;

    // Totals kept up by every change of a row.
    Currency Total_Duration;
    Currency Total_Size;
    std::array<Currency, kClassCount> Class_Count{};
    std::array<Currency, kClassCount> Class_Size{};
    std::array<Currency, kClassCount> Class_Duration{};

    TrackTable() { Dimension(0); }

    // Every column fresh, 0..bound, contents dropped (the load).
    void Dimension(int32_t bound);
    // Every column extended to 0..Track_Count, contents kept (intake, merge).
    void Grow_Columns() { Grow_Columns(Track_Count); }
    // Every column resized to 0..bound, contents kept.
    void Grow_Columns(int32_t bound);
    // Empties the table; a negative Track_Count becomes 0.
    void Reset_Table();
    // Clears every column of one row: numbers 0, texts empty, flags False.
    void ClearRow(int row);
    int32_t Bound() const { return static_cast<int32_t>(Played_Number.size()) - 1; }
};

// Takes row `row` out: totals first, then every row behind it moves up one
// in every column, its stop position with it, and is marked unsaved: on the
// disk it still stands one row further down, and an incremental save must
// write it at its new place. list_count is List2's count before the caller
// removes the item. The columns keep their size; the caller resizes once at
// the end.
void Compact_TrackTable(TrackTable& t, int row, int list_count);

// The first of rows [0, count) whose played number is `number`, or -1. The
// walk asks it once per step, so it runs down the column in blocks that the
// compiler turns into vector compares.
int Row_Numbered(const TrackTable& t, int count, int32_t number);

// Closes gaps in Played_Number, keeping the order (ties: the row found first
// stays first), and moves Played_Count, Played_High and Current_Track along.
void Renumber_Played(TrackTable& t);

// The texts of the mirror lists, row by row.
std::string Row_Number_Text(int row);              // "00001"
std::string Class_Letter(int rating_class);        // "S" "A" "B" "C" "X" or "-"
std::string Duration_Text(Currency seconds);       // "00:03:25"
std::string Size_Text(Currency megabytes);         // "03.50Mb", "01.00Gb"
std::string Bitrate_Text(int bitrate);             // "128"

}  // namespace velmora
