#pragma once
// Putting Tracks into the open Collection from the search page and taking
// them out: List2, its five mirror boxes and the table move together.

#include <cstdint>
#include <string>

#include "base/currency.h"

namespace velmora {

struct AppContext;

// The add (index 0) and remove (index 1) buttons of the search page.
void Command18_Click(AppContext& ctx, int index);
// Add and identify: adds the files of the search page, reads the new rows,
// then offers to remake the filters.
void Command4_Click(AppContext& ctx);
// Removes the files of the search page after asking, then offers to remake
// the filters.
void Command5_Click(AppContext& ctx);

// Adds every file the search page points at (File1, or the folders of List1)
// that the Collection does not hold yet.
void Add_Files_Under_Path(AppContext& ctx);
// Removes every Track whose file the search page points at.
void Removing_Files_Under_Path(AppContext& ctx);

// What a removal run has done so far.
struct RemovalTally {
    int32_t removed = 0;
    int32_t errors = 0;           // files that could not be deleted from disk
    Currency freed_size;          // megabytes of the removed Tracks
    Currency freed_duration;      // their seconds
    std::string status;           // the last file's outcome
};
// Removes the Track at row, whose path is path.
void Remove_the_Files(AppContext& ctx, const std::string& path, int row, RemovalTally& tally);

}  // namespace velmora
