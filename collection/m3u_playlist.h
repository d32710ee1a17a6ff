#pragma once
// M3U play lists, plain and extended: read as players of every age wrote
// them, written as UTF-8 extended M3U (.m3u8).

#include <string>
#include <string_view>
#include <vector>

#include "core/playlist_reader.h"

namespace velmora {

// The text encoding a list was written in, found from its bytes.
enum class ListEncoding { Utf8, Cp1253, Latin1 };
// A UTF-8 byte order mark or valid UTF-8 is UTF-8; otherwise the bytes
// are code page 1253 when their high letters come in words, as Greek
// letters do, and Latin-1 when they stand alone among ASCII letters, as
// accents do, or when a byte the Greek code page lacks is among them.
ListEncoding Detect_Encoding(std::string_view bytes);
bool Is_Utf8(std::string_view bytes);
// The bytes as UTF-8, read in the encoding they show (a byte order mark
// dropped).
std::string Text_As_Utf8(std::string_view bytes);

// The entries with their sources as written (Resolve_Source finds the
// files), the #EXTINF duration and title, and the attributes this program
// writes. Comments and directives unknown here are passed over; never fails.
PlaylistContents Parse_M3u(std::string_view bytes);

// "#EXTM3U", then per entry "#EXTINF:seconds,Artist - Title" (-1 seconds and
// no title when they are not known), the album and
// genre lines other players read, one "#VELMORA:Name=Value" line per
// attribute, and the source. UTF-8, lines ended by "\n".
std::string Write_M3u8(const std::vector<PlaylistEntry>& entries);

}  // namespace velmora
