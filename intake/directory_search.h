#pragma once
// The search page: which files count as media, the drive, folder and file
// boxes, and the breadth-first search for the folders that hold media.

#include <string>
#include <string_view>

namespace velmora {

struct AppContext;
class ListBox;
class FileSystemBox;

// True when the name fits one of the ";"-separated patterns ("*.mp3;*.WAV"),
// "*" and "?" as wildcards, without regard to case. An empty pattern list
// fits every name, as the file box shows all files when no type is chosen.
bool Matches_Patterns(std::string_view name, std::string_view patterns);

// File1: the plain files of its Path that fit its Pattern, sorted by name
// without regard to case. A folder that cannot be read leaves the box empty.
void Refresh_File_List(FileSystemBox& file1);
// Dir1: the full paths of the subfolders of its Path, sorted likewise.
void Refresh_Dir_List(FileSystemBox& dir1);
// Drive1: the mount points listed in the mounts file, "/" first, each once.
void Refresh_Drive_List(FileSystemBox& drive1, const std::string& mounts_file = "/proc/mounts");

void Dir1_change(AppContext& ctx);
void Drive1_Change(AppContext& ctx);
// Type_List clicked: the pattern of File1 from the selected types.
void List3_Click(AppContext& ctx);
// The type buttons: All, Sound, Video, Lists, Extra; a second click clears.
void Command7_Click(AppContext& ctx, int index);
// Index 0 selects all of List1 or none; index 1 inverts it.
void Command1_Click(AppContext& ctx, int index);
void Check2_Click(AppContext& ctx);
// Sets Check2 and runs its handler when the value changed, as a click would.
void Set_Check2(AppContext& ctx, int value);
// The stop button of the search.
void Command2_Click(AppContext& ctx);
// The guarded entry to the search.
void YpoFakel(AppContext& ctx);
// Fills List1 with every folder under path that holds a file of a selected type.
void Ypo_Fakeloi_Search(AppContext& ctx, std::string path);

}  // namespace velmora
