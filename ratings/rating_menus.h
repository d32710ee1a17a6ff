#pragma once
// The class menus: playing limited to classes, selecting a class's rows,
// and the menu commands of the rating work.

namespace velmora {

struct AppContext;

// Flips a class in the play restriction: 1 X .. 5 S, -1 Unmarked; 0 plays all.
void MnuFavor_Play(AppContext& ctx, int class_code);
// Brings the menus' checks in line with Class_Play.
void ShowFavorites(AppContext& ctx);
// Selects every row of a class by the selection menu's own codes:
// 0 All, 1 rating 1, 2 rating 2, 3 rating 3, 4 Unmarked, 5 rating 5, -1 none.
void SelectFavor(AppContext& ctx, int class_code);
// Every rating back to Unmarked.
void mnufilefavorreset_Click(AppContext& ctx);
// The recount from the letters alone.
void MnuMoreCheckFavorites_Click(AppContext& ctx);

}  // namespace velmora
