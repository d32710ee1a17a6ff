#pragma once
// The check marks of the Files menu that steer the batches.

namespace velmora {

struct AppContext;

enum FileMark { kMarkCopyPoints, kMarkMovePoints, kMarkDeleteDisk, kMarkDeleteRecycle, kMarkDeleteEvenOnError };

// Toggles the mark and the setting behind it. The trash is offered only
// while deleting reaches the disk.
void File_Mark_Click(AppContext& ctx, int mark);

}  // namespace velmora
