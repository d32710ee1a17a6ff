#pragma once
// Copying, moving and deleting many Tracks' files: by class, by selection,
// by the catalogue's result list. The loop, its questions, and how the
// Collection follows the files.

namespace velmora {

struct AppContext;

// Class codes of the commands: 0 all, 1 C', 2 B', 3 A', 4 X', 5 Unmarked,
// 6 S', -1 the selected rows.
constexpr int kBatchAll = 0;
constexpr int kBatchSelected = -1;

struct BatchOutcome {
    bool cancelled = false;  // a question was answered No: nothing was done
    bool escaped = false;    // Esc stopped the loop between two files
    bool stopped = false;    // the playing Track's player was stopped
    // The Tracks were to name the destination, and the Collection cannot
    // store its folder's name: nothing was done.
    bool refused = false;
    int tries = 0, successes = 0, failures = 0;
};

// The loop over the rows, from the last to the first so that a removed row
// never moves one still to come. mode 0 copy, 1 move, 2 delete; with
// from_results the selected rows of the catalogue's result list, else List2
// (the selected rows for class -1, the class's rows for the others).
// ask_move: a move asks first how the Collection follows the files.
BatchOutcome File_Batch(AppContext& ctx, bool from_results, int class_code, int mode, bool ask_move);

// The Collection follows the files: the catalogue rebuilt, the changed rows
// saved, and " -> Σώθηκε - Saved" in the log when the save reached the disk.
void Save_After_Batch(AppContext& ctx);

// The Copy and Move menus: mode 0 copy, -1 move. What the batch did; a
// command that did not start counts as cancelled.
BatchOutcome MoveSelected(AppContext& ctx, int mode, int class_code);
// The Delete menu. The C' and A' rows look at each other's count to decide
// whether there is anything to delete: users of both know the rows so.
BatchOutcome Pro_File_Del(AppContext& ctx, int class_code);

// The table's class of a command's class code (1 C' is class 2, ...).
int Table_Class_Of(int class_code);

}  // namespace velmora
