#pragma once
// Reading every Track's duration, size, bit rate and tags through the hidden
// reader engine into the table's columns and the mirror lists.

#include <string>

namespace velmora {

struct AppContext;

// Modes of a run: read every row anew, or go on with the rows not yet read.
constexpr int kIdentifyNew = 0;
constexpr int kIdentifyContinue = -1;

// The question asked before a run, Greek paragraph first.
std::string Identify_Question();

// The run. Asks first; false when nothing was read, because the user said
// No or the Collection is empty: then nothing was touched.
// Esc stops it between rows, leaving the rest unidentified for a later
// Continue. Ends with a save of the Collection.
bool Identify_Properties(AppContext& ctx, int mode);

// The class a file's UserRating (0 to 99) stands for; -1 outside that range.
int Rating_Class_Of(int user_rating);

// The Filters menu rows.
void MnuMoreFileSizesAll_Click(AppContext& ctx);
void MnuMoreFileSizesUnknonw_Click(AppContext& ctx);
void MnuMoreFileSizesReadRatings_Click(AppContext& ctx);
void MnuMoreFileSizesKeepRatings_Click(AppContext& ctx);

}  // namespace velmora
