#pragma once
// Ratings moved between the table and the UserRating attribute of the media
// files (0 to 99), for one row or the whole Collection, and the menu rows
// that start it.

#include <string>

namespace velmora {

struct AppContext;

// Modes of Exchange_Ratings; any other runs no row.
constexpr int kExchangeOneRow = 0;
constexpr int kExchangeReadAll = 1;
constexpr int kExchangeWriteAll = 255;

// Three tables, each needed as it stands. What a class writes: "0", "1",
// "25", "50", "75", "99".
std::string Written_Rating(int rating_class);
// A value read from a file as a class: 0; 1-12 X; 13-37 C; 38-62 B; 63-86 A;
// 87-99 S; -1 outside 0 to 99.
int Class_Read_From_File(int value);
// The same value compared with the row's class after a write: 0; 1; 2-25 C;
// 26-50 B; 51-75 A; 76-99 S; -1 outside. A file holding 12 reads as X and
// compares as C.
int Class_Compared_After_Write(int value);

struct ExchangeOutcome {
    int changes = 0;       // rows whose class and file differed
    int left_alone = 0;    // files that could not be written, each logged
    bool canceled = false; // Esc stopped the pass
};

// Mode 0 writes the class of row `track` into its file; 1 reads every row's
// class from its file; 255 writes every row's class into its file. Ends with
// the count of changes in the log and the Collection marked unsaved.
ExchangeOutcome Exchange_Ratings(AppContext& ctx, int track, int mode);

// The menu rows: read every rating from the files (after a warning), write
// every rating into them (after a question), and the stored mark that
// nothing else reads.
void MnuMoreReadFavorFromFiles_Click(AppContext& ctx);
void MnuMoreSaveFavorWithinFiles_Click(AppContext& ctx);
void MnuMoreFavorWithinFiles_Click(AppContext& ctx);

}  // namespace velmora
