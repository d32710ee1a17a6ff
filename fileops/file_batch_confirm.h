#pragma once
// The question before a batch of file operations.

namespace velmora {

struct AppContext;

constexpr int kBatchMove = 1;
constexpr int kBatchDelete = 2;

// Asks before the chosen files are moved (mode 1), in the words of how the
// Collection follows them, or deleted (mode 2), in the words that fit where
// they go: out of the Collection only, to the trash, or off the disk.
// True when the user cancelled.
bool Confirm_File_Batch(AppContext& ctx, int mode);

}  // namespace velmora
