#pragma once
// Giving ratings and showing them.

namespace velmora {

struct AppContext;

// Restricts playing to a class (0 Unmarked as -1, 0 for all classes).
void MnuFavor_Play(AppContext& ctx, int rating_class);
// Shows a rating and writes its letter to row `track` of the class list.
void DeikseAgapi(AppContext& ctx, int rating, int track);
void Update_Class_Labels(AppContext& ctx);
// Gives the current Track its calculated rating.
void Command8_Click(AppContext& ctx);

}  // namespace velmora
