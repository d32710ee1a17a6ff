#pragma once
// One file that will not play must not stop playing. The clock watches the
// Track it has started: a file the engine cannot start, lets go of on its own,
// or holds without its position moving while it says it plays or loads, is
// given up. The log names it, its row and class stay as they are, and the
// walk moves on through the same door as the end of a Track.

#include <cstdint>

#include "base/result.h"

namespace velmora {

struct AppContext;
class MediaEngine;

// How long a Track may stand still while its engine says it plays or loads.
// An engine opens a local file and moves its position within a fraction of a
// second, and a sleeping disk wakes in two or three; five seconds without a
// change is no slow start but a file that does not play. With the clock at
// its slow periods (6 s in the tray, 10 s while identifying) it is seen at
// the first tick past the limit.
constexpr int kStallLimitMs = 5000;

// The clock's start action has asked `engine` to play the new Track, and it
// answered `played`. Starts the watch; false when the file could not be
// started at all, in which case it has already been given up.
bool Watch_Started(AppContext& ctx, MediaEngine& engine, const Status& played);
// Once a tick: true when the Track has just been given up, and the tick is over.
bool Watch_Progress(AppContext& ctx);
// The walk moves elsewhere: nothing is watched until the clock starts a Track.
void Forget_Watch(AppContext& ctx);

}  // namespace velmora
