#pragma once
// The question before a batch of file operations.

namespace velmora {

struct AppContext;

constexpr int kBatchDelete = 2;

// Asks before the chosen files are deleted (mode 2), in the words that fit
// where they go: out of the Collection only, to the trash, or off the disk.
// True when the user cancelled. Moving asks its own question with the
// destination, where moving is done.
bool Confirm_File_Batch(AppContext& ctx, int mode);

}  // namespace velmora
