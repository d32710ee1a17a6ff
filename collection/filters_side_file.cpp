// The filters side file: the catalogue's value lists and filter rows, written
// and read in sequence from the first record.
#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>

#include "base/record_file.h"
#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "collection/stored_collection.h"
#include "core/app_context.h"
#include "core/progress.h"

namespace velmora {

namespace {

using filter_record::kValueBoxes;
// The lists in the file's order: the value boxes, then the filter rows.
constexpr int kRowsList = kValueBoxes;
constexpr int kLists = kValueBoxes + 1;
static_assert(std::tuple_size_v<decltype(CollectionState::Stored_Filters)> == kLists);

// Value box k (1 to 8) of the catalogue.
ListBox* Value_Box(Form1& f, int k) { return &f.Combo4_0[k]; }

// The text from the n-th character on (counting from 1), by characters, not
// bytes: every character of the file's code page is one character here.
std::string From_Character(const std::string& utf8, int n) {
    size_t at = 0;
    for (int skipped = 0; skipped < n - 1 && at < utf8.size(); ++skipped) {
        ++at;
        while (at < utf8.size() && (static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80) ++at;
    }
    return utf8.substr(at);
}

// Progress of the filters reader: every 100th item and the last 150.
bool Progress_Due(int64_t done, int64_t total) { return done % 100 == 0 || total - done < 150; }

// What an incremental save remembers of a stored item instead of a copy:
// two texts with one hash are a chance of one in 2^64 for each item changed.
uint64_t Stored_Hash(std::string_view text) { return std::hash<std::string_view>{}(text); }

}  // namespace

FilterLists Filter_Lists(Form1& f) {
    FilterLists lists;
    for (int k = 1; k <= kValueBoxes; ++k) lists.boxes[k - 1] = Value_Box(f, k);
    lists.rows = &f.List5;
    return lists;
}

void Load_Filters(AppContext& ctx, const std::string& path, bool& error) {
    Form1& f = ctx.form1;
    const FilterLists lists = Filter_Lists(f);
    RecordFile file;
    ctx.collection.Stored_Filters_Known = false;
    if (!file.Open(path, kFiltersRecordLength, RecordFile::Mode::ReadOnly)) {
        error = true;
        return;
    }

    FilterCounts counts{};
    if (Read_Filter_Counts(file, counts).Any()) error = true;
    int64_t total = 0;
    for (int16_t n : counts) total += n;

    auto& stored = ctx.collection.Stored_Filters;
    for (auto& list : stored) list.clear();
    // What the lists held before the load is not known to match the file.
    ctx.collection.Stored_Revisions.fill(0);
    // The rows are stored with their upper index, so that many plus one follow.
    const int upper = counts[kRowsList];
    FilterRows& filter_text = ctx.catalogue.Filter_Text;
    filter_text.assign(static_cast<size_t>(std::max(upper, 0)) + 1);
    int64_t done = 0;
    PackedTexts rows;
    // The rows' room measured first and taken at once: a buffer that grows
    // as they come copies itself over and over, and the list then copies it
    // once more to drop the room left over. The measure reads the file's
    // records once more, which costs less than either copy.
    const size_t rows_length = Filter_Rows_Length(file, counts);
    rows.reserve(static_cast<size_t>(std::max(upper, -1) + 1), rows_length);
    // The cached rows are those rows from their 15th character with their
    // blanks counted, so they fit the same room (a byte that no text of the
    // program holds would take two; then the buffer grows). Room they leave
    // unwritten costs no memory.
    filter_text.reserve(rows_length);
    // A record that cannot be read inside the file is passed over.
    const ReadFaults faults = Read_Filter_Items(file, counts, [&](int list, int j, const std::string* text) {
        ++done;
        if (Progress_Due(done, total)) Show_Progress(f, done, total, 1);
        if (!text) return;
        stored[list].push_back(Stored_Hash(*text));
        if (list < kRowsList) {
            if (lists.boxes[list]) lists.boxes[list]->AddItem(*text);
            return;
        }
        rows.push_back(*text);
        // The first two rows are headings; from the third on, a row is
        // the Track's number twice and then its cached filter text.
        if (j >= 2) filter_text.Set(j, From_Character(*text, 15));
    });
    if (faults.Any()) error = true;
    // One row per Track: they go to the list in one piece, as the Tracks do.
    if (lists.rows->ListCount() == 0) {
        lists.rows->Assign(std::move(rows));
    } else {
        PackedTexts items = lists.rows->Items();
        items.append(rows);
        lists.rows->Assign(std::move(items));
    }
    ctx.collection.Stored_Filters_Known = !error;
    ctx.table.Filters_Changed = 0;
}

void Write_Filters(AppContext& ctx, const std::string& path, bool& error, bool* disk_failed) {
    const FilterLists lists = Filter_Lists(ctx.form1);
    CollectionState& c = ctx.collection;
    c.Stored_Filters_Known = false;
    RecordFile file;
    bool clean = true;
    auto disk_error = [&] {
        error = true;
        clean = false;
        if (disk_failed) *disk_failed = true;
        Note_Save_Fault(ctx, path, file.LastError());
    };
    if (!file.Open(path, kFiltersRecordLength)) {
        disk_error();
        return;
    }

    // A count beyond the Integer of its record cannot be stored.
    auto put_count = [&](int64_t record, int count) {
        if (count <= std::numeric_limits<int16_t>::max() && file.PutInteger(record, static_cast<int16_t>(count)))
            return;
        error = true;
        clean = false;
        Note_Save_Fault(ctx, path, "record " + std::to_string(record) + ": a count of " + std::to_string(count) +
                                       " is beyond its field");
    };
    for (int k = 0; k < kValueBoxes; ++k)
        put_count(filter_record::Box_Count(k), lists.boxes[k] ? lists.boxes[k]->ListCount() : 0);
    put_count(filter_record::kRowsUpper, lists.rows->ListCount() - 1);

    int64_t record = filter_record::kFirstItem;
    for (int k = 0; k < kLists; ++k) {
        const ListBox* list = k < kRowsList ? lists.boxes[k] : lists.rows;
        c.Stored_Filters[k].clear();
        if (!list) continue;
        for (std::string_view item : list->Items()) {
            if (!file.PutString(record++, item)) {
                error = true;
                clean = false;
                Note_Save_Fault(ctx, path, file.LastError());
            }
            c.Stored_Filters[k].push_back(Stored_Hash(item));
        }
        c.Stored_Revisions[k] = list->Revision();
    }

    if (file.WriteFailed() || !file.Sync()) disk_error();
    if (!file.Close()) disk_error();
    // A record that could not be stored holds something else: from now on
    // the file is only ever written whole.
    c.Stored_Filters_Known = clean;
}

bool Update_Filters_In_Place(AppContext& ctx, const std::string& path, bool& error, bool* disk_failed,
                             Flush flush) {
    const FilterLists lists = Filter_Lists(ctx.form1);
    CollectionState& c = ctx.collection;
    if (!c.Stored_Filters_Known || !File_Exists(path)) return false;
    std::array<const PackedTexts*, kLists> now{};
    std::array<uint64_t, kLists> revisions{};
    static const PackedTexts kNone;
    for (int k = 0; k < kLists; ++k) {
        const ListBox* list = k < kRowsList ? lists.boxes[k] : lists.rows;
        now[k] = list ? &list->Items() : &kNone;
        revisions[k] = list ? list->Revision() : 0;
        // Another count moves every record behind it.
        if (now[k]->size() != c.Stored_Filters[k].size()) return false;
    }

    RecordFile file;
    bool clean = true;
    bool broken = false;
    auto disk_error = [&] {
        error = true;
        clean = false;
        broken = true;
        if (disk_failed) *disk_failed = true;
        Note_Save_Fault(ctx, path, file.LastError());
    };
    int64_t record = filter_record::kFirstItem;
    for (int k = 0; k < kLists && !broken; ++k) {
        // A list unchanged since it was stored holds what the file holds.
        if (revisions[k] != 0 && revisions[k] == c.Stored_Revisions[k]) {
            record += static_cast<int64_t>(now[k]->size());
            continue;
        }
        for (size_t j = 0; j < now[k]->size(); ++j, ++record) {
            const std::string_view item = (*now[k])[j];
            const uint64_t hash = Stored_Hash(item);
            if (hash == c.Stored_Filters[k][j]) continue;
            // Opened only when something differs: an unchanged file keeps its date.
            if (!file.IsOpen() && !file.Open(path, kFiltersRecordLength)) {
                disk_error();
                break;
            }
            if (!file.PutString(record, item)) {
                error = true;
                clean = false;
                Note_Save_Fault(ctx, path, file.LastError());
            }
            c.Stored_Filters[k][j] = hash;
        }
    }
    if (!broken) c.Stored_Revisions = revisions;
    if (file.IsOpen() &&
        (file.WriteFailed() || !(flush == Flush::Later ? file.WriteOut() : file.Sync()) || !file.Close()))
        disk_error();
    c.Stored_Filters_Known = clean;
    return true;
}

}  // namespace velmora
