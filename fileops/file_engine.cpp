#include "fileops/file_engine.h"

namespace velmora {

// The file operations come with their own work; until then nothing is deleted, and says so.
bool Delete_Track_File(AppContext&, const std::string&, int) { return false; }

}  // namespace velmora
