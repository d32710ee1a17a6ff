#pragma once
// Copying, moving and deleting the files of Tracks on disk.

#include <string>

namespace velmora {

struct AppContext;

// Deletes the file at path (mode 2: as part of removing Tracks). True when
// the file is gone.
bool Delete_Track_File(AppContext& ctx, const std::string& path, int mode);

}  // namespace velmora
