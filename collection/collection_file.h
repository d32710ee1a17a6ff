#pragma once
// The Collection's files on disk and the pointer to the last one.

namespace velmora {

struct AppContext;

void Load_Pointer(AppContext& ctx);
void Save_Pointer(AppContext& ctx);
void Load_Collection(AppContext& ctx);
// full: write every row, not only the changed ones; question: report success in a box.
void Save_Collection(AppContext& ctx, bool question, bool full);

}  // namespace velmora
