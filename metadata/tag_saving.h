#pragma once
// Saving the tag boxes into a file and into the Track's columns.

#include <string>

namespace velmora {

struct AppContext;
class MediaItem;

// The attribute names in the order they are written; the year is asked for
// as "WM/Year" and written as "Year".
inline constexpr const char* kTagNames[6] = {"Title", "Artist", "Album", "WM/Year", "Comment", "Genre"};

// Reaches the file only through the one play list named after the open
// Collection, as the player's library does; without exactly one such list,
// or without the file in it, nothing is written. Then writes Tag_Values and
// puts them into the Track's columns. `error` gets what failed, if anything.
void Save_Tags(AppContext& ctx, const std::string& path, std::string& error);

// The writing itself: each writable name in order, a value the file holds
// already left alone; the values then go into the columns of the Track at
// `path`. What could not be written is logged.
void Write_Tag_Values(AppContext& ctx, MediaItem& item, const std::string& path, std::string& error);

}  // namespace velmora
