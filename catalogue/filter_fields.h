#pragma once
// The catalogue's texts: what each box lists for a Track, and the
// fixed-width rows of the result lists. A row's fields start at fixed
// characters, so that the list reads as a table in a monospaced font and a
// click can read the Track's number back from characters 8 to 13.

#include <string>
#include <string_view>

#include "base/currency.h"

namespace velmora {

struct AppContext;

// The boxes, by index: 0 class, 1 duration, 2 size, 3 bit rate, 4 genre,
// 5 album, 6 artist, 7 year, 8 title.
constexpr int kFilterBoxes = 9;

// The duration box lists minutes only: "00:" and the minutes within the
// hour, so 2 h 3 min lists as "00:03". The hours never show.
std::string Duration_Box_Text(Currency duration);
// "#0.00" and "Mb", or from 1024 Mb on, in "Gb".
std::string Size_Box_Text(Currency megabytes);
std::string Bitrate_Box_Text(int16_t bitrate);

// The text left-justified in `width` characters: padded with blanks, cut.
std::string Pad_Field(std::string_view text, int width);

// The cached row of Track i, from the table, the class box and the lists.
std::string Filter_Row(const AppContext& ctx, int i);
// The two head rows every result list begins with.
std::string Head_Title();
std::string Head_Rule();
// A list row: the running number, the Track's number, its cached row.
std::string List_Row(int number, int track, std::string_view filter_text);
// The Track's number (1-based) a list row carries, or -1 for a head row.
int Row_Track_Number(std::string_view row);

// The value of box k's field for Track i, as the query compares it.
std::string Filter_Column_Value(const AppContext& ctx, int k, int i);

// Character of the cached row where the class field starts, and its width.
constexpr int kFavoriteStart = 47;
constexpr int kFavoriteWidth = 20;

}  // namespace velmora
