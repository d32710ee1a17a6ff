#pragma once
// What stands above and around the Track list: the counts, the play mode,
// the window captions with their percentages.

namespace velmora {

struct AppContext;

// The one refresh of the totals, the mode text and the captions; whoever
// changes a count, a class or what has been played calls it. Where classes
// are chosen it walks every row, so it is never called per tick; otherwise
// the duration played is left to be counted when it is read.
void Etiketes_Synol_Songs(AppContext& ctx);

// Counts the duration played before the current Track if the last refresh
// left it to be counted. Whoever reads PlaybackState::Played_Duration calls
// it first.
void Settle_Played_Duration(AppContext& ctx);

}  // namespace velmora
