#pragma once
// Ratings that other players write into files, read onto the program's user
// rating: 1, 25, 50, 75 or 99 for one to five stars, 0 for a file that has no
// rating. Every scale is read by ranges around its own five star values, so a
// half star or a value a little off rounds to the nearest star (halves up).

namespace TagLib {
class File;
}

namespace velmora {

// An ID3v2 popularimeter, 0 to 255; stars at 1, 64, 128, 196 and 255.
// 0 means "unknown" there.
int UserRatingFromPopularimeter(int value);
// A percentage, 0 to 100: Xiph RATING and the MP4 "rate" item; stars at 20,
// 40, 60, 80 and 100, halves at 10, 30, ...; above 100 counts as 100. The
// values this program writes there (1, 25, 50, 75, 99) read as written.
int UserRatingFromPercent(long long value);
// FMPS_RATING, 0.0 to 1.0: the percentage scale divided by 100.
int UserRatingFromFmps(double value);
// WM/SharedUserRating is already on the program's scale; out-of-range values are clamped.
int UserRatingFromWindowsMedia(long long value);

// The first rating found in the file's tags, in this order: ID3v2 POPM (any
// e-mail), ID3v2 TXXX FMPS_Rating, Xiph RATING, Xiph FMPS_RATING, MP4 "rate",
// ASF WM/SharedUserRating. 0 when there is none.
int ReadUserRating(TagLib::File& file);

// The popularimeter value other players show as the stars of a user rating
// (1 to 99): 1, 64, 128, 196 or 255.
int PopularimeterFromUserRating(int user_rating);

// Writes the rating (1 to 99; 0 removes it) in the file's own way: ID3v2
// POPM (MP3, WAV, AIFF), Xiph RATING 0-100 and FMPS_RATING 0.0-1.0 (Ogg,
// Opus, FLAC), MP4 "rate", ASF WM/SharedUserRating. Every POPM frame the file
// has takes the new value and keeps its e-mail, so that whichever player's
// frame is read first agrees; a file without one gets a frame of its own.
// False for a format that has no place for a rating. The caller saves.
bool WriteUserRating(TagLib::File& file, int user_rating);

}  // namespace velmora
