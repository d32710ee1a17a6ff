#pragma once
// Merging: the Tracks of another saved Collection join the open one, behind
// its rows; a path already in the list is left out. The open Collection
// takes a name that records the merge.

#include <cstdint>
#include <string>

namespace velmora {

struct AppContext;

void MnuFileMerge_Click(AppContext& ctx);
// The body of the merge, from the other Collection's main file. Returns the
// rows the other Collection holds (duplicates included) when it was read,
// -1 when it was refused (another version, too many Tracks) or unreadable.
int32_t Merge_Collection(AppContext& ctx, const std::string& path);
// How many Tracks of the files side file are not in List2 yet.
void Count_New_Tracks(AppContext& ctx, const std::string& files_path, int32_t total, int32_t& new_count);
// Takes the Tracks not in List2 behind the present rows; `error` is set when
// the file could not be read to its end: the rows read so far stay.
void Read_Files_In_Add(AppContext& ctx, const std::string& files_path, bool& error, int32_t total);
// Raises the played numbers of the last `added` + 1 rows by the highest
// played number, so that what was played there counts as played after
// what was played here.
void Shift_Played_Numbers(AppContext& ctx, int32_t added);

}  // namespace velmora
