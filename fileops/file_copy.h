#pragma once
// One file's bytes copied whole, or not at all under the destination's name.

#include <string>

namespace velmora {

// Copies `from` to `to`, replacing what stands there. The bytes go to a new
// hidden file in the destination's folder, are synced, and only then take
// the destination's name: an interrupted or failed copy (a full disk, a
// folder closed to us) leaves nothing under that name, and whatever stood
// there before stays whole. The copy keeps the source's permission bits and
// modification time. False when it failed; `why` then says what went wrong.
bool Copy_File_Whole(const std::string& from, const std::string& to, std::string& why);

// rename(2) of `from` onto `to`, when both lie on one file system.
bool Rename_File(const std::string& from, const std::string& to);

}  // namespace velmora
