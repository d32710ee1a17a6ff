#pragma once
// The common reset of the lists, the table and the rating steps.

#include "ratings/rating_calculation.h"

namespace velmora {

struct AppContext;

// 0: clear the lists and the table; 1: keep the table, clear what was played
// and rerun the rating steps; 2: every rating back to Unmarked.
void Reset_Views(AppContext& ctx, int mode);
// Every letter of the class list back to "-", the current Track selected.
void Reset_Rating_Letters(AppContext& ctx);

}  // namespace velmora
