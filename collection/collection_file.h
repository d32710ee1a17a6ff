#pragma once
// The Collection's files on disk and the pointer to the last one.
//
// A Collection is a main file (the walk's state and the header), a files side
// file (a fixed run of records per Track) and a filters side file (the
// catalogue's value lists), all of fixed-length records laid out in
// base/collection_records.h; the pointer file names the Collection of the
// last run.

#include <array>
#include <string>

#include "base/collection_records.h"

namespace velmora {

struct AppContext;
struct Form1;
class ListBox;

void Load_Pointer(AppContext& ctx);
// False when the pointer file could not be written; the log says why.
bool Save_Pointer(AppContext& ctx, std::string* fault = nullptr);
// False when the Collection could not be read whole: a damaged main or files
// side file, another version, too many Tracks. The log says which.
bool Load_Collection(AppContext& ctx);
// full: write every row, not only the changed ones; question: ask first and
// report success in a box. True when everything was saved; otherwise the log
// and ctx.collection.Save_Fault say why, naming the file. No (to the
// question) saves nothing and gives true.
bool Save_Collection(AppContext& ctx, bool question, bool full);

// The side readers and writers; `error` is set on failure and never cleared.
// The writers also set *disk_failed when the file itself could not be
// written or synced, as against a field that could not be stored.
// With Flush::Later a writer only waits until the disk has taken what it
// wrote in place; the caller then syncs another file on the same disk.
enum class Flush { Now, Later };
void Load_Files(AppContext& ctx, const std::string& path, bool& error);
void Write_Files(AppContext& ctx, const std::string& path, bool& error, bool* disk_failed = nullptr,
                 Flush flush = Flush::Now);
void Load_Filters(AppContext& ctx, const std::string& path, bool& error);
// Keeps why the running save failed, the first reason only: the file and
// what went wrong with it.
void Note_Save_Fault(AppContext& ctx, const std::string& path, const std::string& why);
void Write_Filters(AppContext& ctx, const std::string& path, bool& error, bool* disk_failed = nullptr);
// Brings the filters side file up to date by rewriting only the records that
// differ from what it is known to hold; an unchanged file is not touched.
// False when that is not known, or a count changed: then it is written whole.
bool Update_Filters_In_Place(AppContext& ctx, const std::string& path, bool& error, bool* disk_failed = nullptr,
                             Flush flush = Flush::Now);

// The lists the filters side file holds: the value boxes 1 to 8 of the
// catalogue (Combo4_0) and the filter rows (List5). A box the window does
// not have is stored with no items.
struct FilterLists {
    std::array<ListBox*, filter_record::kValueBoxes> boxes{};
    ListBox* rows = nullptr;
};
FilterLists Filter_Lists(Form1& f);

}  // namespace velmora
