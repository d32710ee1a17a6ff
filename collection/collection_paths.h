#pragma once
// Where the files of a Collection stand, worked out from the main file's path,
// and how a save replaces them without ever leaving a half-written Collection.

#include <string>
#include <string_view>

#include "base/collection_records.h"
#include "base/file_kind.h"

namespace velmora {

struct AppContext;

// The default Collection in the collections folder: that of a first run.
std::string Default_Collection_Path(const std::string& app_path);
std::string Default_Collection_Path(const AppContext& ctx);
// The pointer file in the collections folder, naming the last Collection.
std::string Pointer_File_Path(const std::string& app_path);
std::string Pointer_File_Path(const AppContext& ctx);

// The three files of one Collection, the side files under both spellings
// of their suffixes (base/collection_records.h).
struct CollectionPaths : SideFileNames {
    std::string main;
};

// program_folder stands in for a main file that lies in no collections
// folder; the context's App_Path does in the second form.
CollectionPaths Collection_Paths_Of(const std::string& main_path, const std::string& program_folder);
CollectionPaths Collection_Paths_Of(const AppContext& ctx, const std::string& main_path);

// The files of a Collection as a save writes them and a load reads them:
// each followed through its symbolic links to the real file, so that a new
// copy is built and renamed beside it and the link stays a link. `refused`
// names the first file that is neither missing nor a regular file, and
// `refused_kind` says what stands there: nothing of such a Collection is
// written.
struct ResolvedCollection {
    CollectionPaths paths;
    std::string refused;
    FileKind refused_kind = FileKind::Missing;
};
ResolvedCollection Resolve_Collection(const CollectionPaths& logical);

// A save builds whole files under this name beside the target and renames it
// over the target only when the file is complete and on the disk.
std::string Temp_Path(const std::string& target);
// Present while a full save renames its three new files into place: from the
// moment it exists, the new Collection is the one on disk, even where some
// renames have not happened yet.
std::string Commit_Marker_Path(const CollectionPaths& paths);

// The files a load reads: the writer's spelling first, else the load's; and
// where a full save was committed but a crash cut off its renames, the new
// files still under their temporary names.
struct FilesToRead {
    std::string main, files, filters;
};
FilesToRead Files_To_Read(const CollectionPaths& paths);

// Finishes a full save that a crash interrupted after its commit, or throws
// away the temporary files of one that never committed. Every save starts so.
// False when a rename or a sync failed.
bool Settle_Interrupted_Save(const CollectionPaths& paths);

// The side file stored under the load's spelling only takes the writer's
// name, so that rows written in place land in the file the load reads.
bool Adopt_Writer_Spelling(const std::string& writer_path, const std::string& other_path);
// After a full save has put the writer's file in place, a copy left under the
// load's spelling would only shadow it: remove it, unless the file system
// folds case and both names are the same file.
void Drop_Other_Spelling(const std::string& writer_path, const std::string& other_path);

bool File_Exists(const std::string& path);
// Makes a rename or a new file in that folder durable.
bool Sync_Folder_Of(const std::string& path);
// The folders of the three files synced, each once: renames there are durable.
bool Sync_Folders_Of(const CollectionPaths& paths);
// rename(2), then the folder synced.
bool Replace_File(const std::string& from, const std::string& to);
// Copies a file to a temporary name, syncs it, and renames it to `to`.
bool Copy_File_Safely(const std::string& from, const std::string& to);
// Writes the bytes to a temporary name, syncs them, and renames it to `path`.
bool Write_File_Safely(const std::string& path, std::string_view bytes);

}  // namespace velmora
