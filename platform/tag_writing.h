#pragma once
// Writing tags and the user rating into a media file without ever leaving it
// damaged: the changes are made on a copy beside the file, and the copy takes
// the file's name in one rename. A kill at any moment leaves the old file or
// the new one under that name, never a half-written one; the sound itself is
// never rewritten, only carried over byte for byte by the copy. The copy is
// ".NAME.velmora-tag" beside the file, hidden and of no media type.

#include <string>
#include <vector>

#include "base/result.h"

namespace velmora {

struct TagChange {
    // title, artist, album, year, comment, genre or userrating (lower case).
    std::string field;
    // UTF-8; empty removes the field. The rating is 0 to 99, 0 removing it.
    std::string value;
};

// Empty when the file may be written here: a regular file whose tags TagLib
// can write, writable, in a folder that takes the copy. Otherwise why not.
std::string Why_Not_Writable(const std::string& path);

// All changes in one copy and one rename. On failure the file is as it was
// and the error names the file and the cause.
Status Write_Tags(const std::string& path, const std::vector<TagChange>& changes);

}  // namespace velmora
