#pragma once
// The program's own library of play lists: the folder velmora_playlists
// beside the Collections, one .wpl file per list, each known by the title
// it holds, as a media library knows its lists by name. Also the reading
// and writing of any play list file by its ending.

#include <string>
#include <vector>

#include "core/playlist_reader.h"

namespace velmora {

struct AppContext;

inline constexpr char kPlaylistsFolder[] = "velmora_playlists";
// The library's folder, ending in '/'.
std::string Playlist_Folder(const AppContext& ctx);

// The lists of the library whose title is `name`, in the order of their
// file names; a list with no title goes by its file name less ".wpl".
std::vector<std::string> Playlists_Named(AppContext& ctx, const std::string& name);
// A file name in the library for a new list of that name, not yet taken:
// "name.wpl", else "name (2).wpl" and so on.
std::string New_Playlist_File(const AppContext& ctx, const std::string& name);

// The list at `path`, read by its ending: .wpl and .wvx through the XML
// reader of the ports, every other as M3U. False when the file cannot be
// read or is no list; `error` then says why.
bool Read_Playlist_File(AppContext& ctx, const std::string& path, PlaylistContents& out, std::string& error);
// Writes a whole list, replacing the file only once it is complete: .wpl
// as SMIL, every other ending as UTF-8 extended M3U.
bool Write_Playlist_File(const std::string& path, const std::string& title, const std::vector<PlaylistEntry>& entries);

// The folder of a file's path, ending in '/'.
std::string Folder_Of(const std::string& path);
// The last four characters, exactly: ".wpl", ".m3u"...
std::string Ending_Of(const std::string& path);

}  // namespace velmora
