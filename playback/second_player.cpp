#include "playback/second_player.h"

namespace velmora {

// The second player window comes with the video work.
void Passage(AppContext&, int) {}

}  // namespace velmora
