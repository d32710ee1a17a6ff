#include "collection/playlist_file.h"

namespace velmora {

// Play lists come with their own work; until then a list met while adding is passed over.
void Read_Playlist(AppContext&, const std::string&, bool) {}

}  // namespace velmora
