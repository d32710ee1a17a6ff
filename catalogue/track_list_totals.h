#pragma once
// What stands above and around the Track list: the counts, the play mode,
// the window captions with their percentages.

namespace velmora {

struct AppContext;

// The one refresh of the totals, the mode text and the captions; whoever
// changes a count, a class or what has been played calls it. It walks every
// row, so it is never called per tick.
void Etiketes_Synol_Songs(AppContext& ctx);

}  // namespace velmora
