#pragma once
// The album art of the current Track in Picture1 and in the second window.

#include <string>

namespace velmora {

struct AppContext;

// Picture keys that are not the program's own pictures: a picture file's
// path, or kEmbeddedPicture followed by the bytes of a picture found inside
// the media file.
inline constexpr char kEmbeddedPicture[] = "data:";

// "AlbumArtSmall.jpg" of the Track's folder, else its "Folder.jpg" (either
// spelled in any case, as the desktop this comes from did not tell case
// apart), else the picture inside the file; nothing when there is none.
void Show_Album_Art(AppContext& ctx);

// The key Show_Album_Art gives for the media file at `path`; empty for none.
std::string Album_Art_Of(AppContext& ctx, const std::string& path);

}  // namespace velmora
