#pragma once
// The video window's, the second player's and the video menu's handlers.

#include <vector>

#include "base/signal.h"

namespace velmora {

struct AppContext;

void Wire_Window_Handlers(AppContext& ctx, std::vector<Subscription>& links);

}  // namespace velmora
