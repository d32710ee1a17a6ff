#pragma once
// The common reset of the lists, the table and the rating steps.

namespace velmora {

struct AppContext;

// 0: clear the lists and the table; 1: keep the table, rerun the rating and
// class steps; 2: the class steps alone.
void Reset_Views(AppContext& ctx, int mode);
void Reset_Rating_Letters(AppContext& ctx);
void Calculate_Ratings(AppContext& ctx);

}  // namespace velmora
