#pragma once
// The open Collection given to the library of play lists, and the entries
// any play list file is written from.

#include <string>
#include <vector>

#include "core/playlist_reader.h"

namespace velmora {

struct AppContext;
struct StoredTrack;

// Row `row` as a play list entry: its path and length, and the attributes
// "UserRating" (the class number 1 to 5), "Filesize" (in bytes), "Bitrate",
// "Artist", "Genre", "Album", "Title" and "Year", each only when set.
PlaylistEntry Playlist_Entry(const AppContext& ctx, int row);
// The same of a Track as a Collection's files hold it.
PlaylistEntry Playlist_Entry(const StoredTrack& track);
std::vector<PlaylistEntry> Playlist_Entries(const AppContext& ctx);

// Asks, then writes every Track into the library's list `name`, counting the
// files whose own rating stands for another class.
void Export_Playlist(AppContext& ctx, const std::string& name);
// Makes the library's list `name` current (ctx.collection.Current_Playlist):
// a new one when there is none, asking whether to make another when there is
// one, the first when there are more.
void Ensure_Playlist(AppContext& ctx, const std::string& name);
// The export without its questions: the list `name` of the library, the
// first of them when there are more, is written anew from the Collection.
void Keep_Playlist_Updated(AppContext& ctx, const std::string& name);

}  // namespace velmora
