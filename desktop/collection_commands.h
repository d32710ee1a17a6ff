#pragma once
// The Collection as a whole, from the Files menu: new, open, save, save as,
// the automatic save's mark, reset and delete.

#include <string_view>

namespace velmora {

struct AppContext;

void mnufilesnew_Click(AppContext& ctx);
// An opened Collection starts playing at once where it stopped.
void mnuFileOpen_Click(AppContext& ctx);
void mnuFileSave_Click(AppContext& ctx);
// A full save: the side files of a new name are written whole.
void mnuFileSaveAs_Click(AppContext& ctx);
void mnuFileSaveAsAuto_Click(AppContext& ctx);
// Keeps the paths and the files' properties; clears ratings and what was played.
void mnuFileReset_Click(AppContext& ctx);
// Deletes the files of the open Collection, which stays in memory unsaved.
// The default Collection is never deleted.
void mnufiledelete_Click(AppContext& ctx);

// The name ends in ".qel" exactly: ".QEL" is no Collection.
bool Has_Collection_Ending(std::string_view name);

}  // namespace velmora
