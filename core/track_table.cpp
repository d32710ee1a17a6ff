#include "core/track_table.h"

#include <algorithm>
#include <numeric>

#include "base/text_format.h"

namespace velmora {

const char* const kCapacityMessage = "Η παρούσα συλλογή ξεπερνά το όριο κομματιών ";
const char* const kIntakeFullMessage =
    "Δεν είναι δυνατή η περαιτέρω προσθήκη πολυμέσων - It's not possible adding more media files";

std::string CapacityExceededText() {
    return std::string(kCapacityMessage) + std::to_string(kMaxTracks) + " New Collection exceeds this limit";
}

namespace {

template <class Col>
void Fresh(Col& col, size_t n) {
    col.assign(n, typename Col::value_type{});
}

template <class Col>
void Extend(Col& col, size_t n) {
    col.resize(n);
}

template <class Fn>
void EachColumn(TrackTable& t, Fn&& fn) {
    fn(t.Played_Number);
    fn(t.Duration);
    fn(t.Rating_Class);
    fn(t.File_Size);
    fn(t.Stop_Position);
    fn(t.Bitrate);
    fn(t.Artist);
    fn(t.Genre);
    fn(t.Album);
    fn(t.Title);
    fn(t.Year);
    fn(t.Identified);
    fn(t.Slot_Value);
    fn(t.Slot_Text);
    fn(t.Saved);
}

}  // namespace

void TrackTable::Dimension(int32_t bound) {
    const size_t n = static_cast<size_t>(std::max<int32_t>(bound, 0)) + 1;
    EachColumn(*this, [n](auto& col) { Fresh(col, n); });
}

void TrackTable::Grow_Columns(int32_t bound) {
    const size_t n = static_cast<size_t>(std::max<int32_t>(bound, 0)) + 1;
    EachColumn(*this, [n](auto& col) { Extend(col, n); });
}

void TrackTable::Reset_Table() {
    if (Track_Count < 0) Track_Count = 0;
    Track_Count = 0;
    Dimension(0);
    Current_Track = 0;
    Current_Position = 0;
    Played_Count = 0;
    Played_High = 0;
    Total_Duration = Currency();
    Total_Size = Currency();
    Class_Count.fill(Currency());
    Class_Size.fill(Currency());
    Class_Duration.fill(Currency());
}

void TrackTable::ClearRow(int r) {
    Duration[r] = Currency();
    File_Size[r] = Currency();
    Stop_Position[r] = Currency();
    Bitrate[r] = 0;
    Artist[r].clear();
    Genre[r].clear();
    Album[r].clear();
    Title[r].clear();
    Year[r].clear();
    Slot_Value[r].fill(0);
    Slot_Text[r] = SlotTexts();
    Played_Number[r] = 0;
    Rating_Class[r] = 0;
    Identified[r] = false;
    Saved[r] = false;
}

void Compact_TrackTable(TrackTable& t, int row, int list_count) {
    if (row < 0 || row > t.Bound()) return;
    if (t.Total_Size > Currency()) t.Total_Size -= t.File_Size[row];
    if (t.Total_Duration > Currency()) t.Total_Duration -= t.Duration[row];
    const int rc = t.Rating_Class[row];
    if (rc >= 0 && rc < kClassCount) {
        if (t.Class_Count[rc] > Currency()) t.Class_Count[rc] -= Currency(1);
        t.Class_Size[rc] -= t.File_Size[row];
        t.Class_Duration[rc] -= t.Duration[row];
    }

    // One column at a time: each move runs down contiguous memory, which on
    // a full table is what keeps a removal short.
    const int last = std::min(list_count - 1, t.Bound());
    auto shift = [&](auto& col) {
        if (row < last) std::move(col.begin() + row + 1, col.begin() + last + 1, col.begin() + row);
    };
    shift(t.Duration);
    shift(t.File_Size);
    shift(t.Bitrate);
    shift(t.Artist);
    shift(t.Genre);
    shift(t.Album);
    shift(t.Title);
    shift(t.Year);
    shift(t.Slot_Value);
    shift(t.Slot_Text);
    shift(t.Played_Number);
    shift(t.Rating_Class);
    // vector<bool> has no move-assignable references; copy bit by bit. The
    // stop positions stay where they are, so a Track moved up takes the one
    // of the row before it; every moved row waits for the next save, which
    // would otherwise leave the removed Track's record where it stood.
    for (int r = row; r < last; ++r) {
        t.Identified[r] = t.Identified[r + 1];
        t.Saved[r] = false;
    }
    const int blank = std::max(last, row);
    t.ClearRow(blank);
    t.Slot_Text[blank].Fill("0");
}

void Renumber_Played(TrackTable& t) {
    const int n = t.Bound() + 1;
    std::vector<int> rows;
    for (int r = 0; r < n; ++r)
        if (t.Played_Number[r] > 0) rows.push_back(r);
    std::stable_sort(rows.begin(), rows.end(),
                     [&](int a, int b) { return t.Played_Number[a] < t.Played_Number[b]; });
    int32_t k = 0;
    for (int r : rows) {
        ++k;
        if (t.Played_Number[r] != k) {
            t.Played_Number[r] = k;
            t.Saved[r] = false;
        }
    }
    const int32_t distance = t.Played_High - t.Played_Count;
    t.Played_Count = k - distance;
    t.Played_High = k;
    for (int r : rows) {
        if (t.Played_Number[r] == t.Played_Count) {
            t.Current_Track = r;
            break;
        }
    }
}

namespace {

// What Format gives for an integer pattern of `width` zeros ("#00000",
// "0#", "000"): the digits, zeros in front up to the width, and "-" before a
// negative. A load formats five of these for each of 32,766 rows, and the
// general pattern reader was a tenth of its time.
void Append_Padded(std::string& out, uint64_t magnitude, bool negative, int width) {
    char digits[24];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative) out.push_back('-');
    if (n < width) out.append(static_cast<size_t>(width - n), '0');
    while (n > 0) out.push_back(digits[--n]);
}

uint64_t Magnitude_Of(int64_t v) { return v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v); }

void Append_Padded(std::string& out, int64_t value, int width) {
    Append_Padded(out, Magnitude_Of(value), value < 0, width);
}

// Format(value, "#00.00"): hundredths, a half rounded away from zero, and
// "-" only before what does not round to zero.
std::string Hundredths_Text(Currency value) {
    const int64_t raw = value.Raw();  // ten-thousandths
    const uint64_t hundredths = (Magnitude_Of(raw) + 50) / 100;
    std::string out;
    Append_Padded(out, hundredths / 100, raw < 0 && hundredths != 0, 2);
    out.push_back('.');
    Append_Padded(out, hundredths % 100, false, 2);
    return out;
}

}  // namespace

std::string Row_Number_Text(int row) {
    std::string out;
    Append_Padded(out, int64_t{row} + 1, 5);
    return out;
}

std::string Class_Letter(int rating_class) {
    switch (rating_class) {
        case 1: return "X";
        case 2: return "C";
        case 3: return "B";
        case 4: return "A";
        case 5: return "S";
        default: return "-";
    }
}

std::string Duration_Text(Currency seconds) {
    const int64_t s = seconds.Round();
    std::string out;
    Append_Padded(out, s / 3600, 2);
    out.push_back(':');
    Append_Padded(out, (s % 3600) / 60, 2);
    out.push_back(':');
    Append_Padded(out, (s % 3600) % 60, 2);
    return out;
}

std::string Size_Text(Currency megabytes) {
    if (megabytes < Currency(1024)) return Hundredths_Text(megabytes) + "Mb";
    return Hundredths_Text(megabytes / Currency(1024)) + "Gb";
}

std::string Bitrate_Text(int bitrate) {
    std::string out;
    Append_Padded(out, int64_t{bitrate}, 3);
    return out;
}

int Row_Numbered(const TrackTable& t, int count, int32_t number) {
    const int32_t* column = t.Played_Number.data();
    const int rows = std::min<int>(count, static_cast<int>(t.Played_Number.size()));
    constexpr int kBlock = 64;
    int i = 0;
    for (; i + kBlock <= rows; i += kBlock) {
        int hit = 0;
        for (int j = 0; j < kBlock; ++j) hit |= static_cast<int>(column[i + j] == number);
        if (hit != 0) break;
    }
    for (; i < rows; ++i)
        if (column[i] == number) return i;
    return -1;
}

}  // namespace velmora
