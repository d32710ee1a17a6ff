#pragma once
// The files of a Collection that a load could read only in part, moved aside
// under a name that says so, so that a save of what was read never replaces
// what could not be.

#include <optional>
#include <string>
#include <vector>

#include "base/local_time.h"
#include "collection/collection_paths.h"

namespace velmora {

// ".unreadable-20261124-0912": the suffix the files take, from the time.
std::string Unreadable_Suffix(const LocalTime& now);

// Renames each of the Collection's files that exists (the main file, and
// both side files under either spelling) to its own name with the suffix of
// `now`, in its own folder; one suffix for all, with "-2", "-3", ... behind it
// when a file of that name stands there already. The new names, in order;
// nullopt when a rename failed (those done stay done: nothing is lost).
std::optional<std::vector<std::string>> Move_Aside_Unreadable(const CollectionPaths& paths, const LocalTime& now);

}  // namespace velmora
