#pragma once
// The media reader: what the program learns of a file without playing it.
// TagLib reads the tags and the length of the audio formats it knows;
// libavformat answers for the rest (films among them) and tells a film from
// a song inside containers that may hold either. The file is read once, when
// the item is made; its answers are kept, so asking is cheap.

#include <memory>
#include <string>

#include "core/media_engine.h"

namespace velmora {

// Attribute names are matched without regard to case. The item answers
// "Title", "Artist", "Album", "WM/Year", "Comment", "Genre", "MediaType"
// ("audio", "video", "photo" or "other"), "UserRating" (1 to 99, empty when
// the file has none), "Filesize" (bytes), "Bitrate" (bits per second) and
// "WM/Picture" (the bytes of the picture inside the file, read when asked).
// A file that cannot be read has duration 0 and empty answers. Never null.
// The six tags and "UserRating" can be written where TagLib writes the
// format and the file and its folder are writable (platform/tag_writing.h);
// every other attribute, and every attribute of such a file, is read-only.
std::unique_ptr<MediaItem> ReadMediaItem(const std::string& path);

}  // namespace velmora
