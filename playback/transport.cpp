#include "playback/transport.h"

namespace velmora {

// The walk and the transport come with the play loop; start-up presses them in their places.
void Command3_Click(AppContext&, int) {}
void Command11_Click(AppContext&) {}

}  // namespace velmora
