#pragma once
// The picture an album art key names: a picture file's path, or the bytes
// of a picture taken from inside a media file (metadata/album_art.h).

#include <QPixmap>

#include <string>

namespace velmora {

// A null pixmap for no key, for bytes that are no picture, and for a JPEG
// cut short or damaged: half a picture is not shown.
QPixmap ArtPixmap(const std::string& key);

}  // namespace velmora
