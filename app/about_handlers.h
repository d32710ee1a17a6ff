#pragma once
// The About menu's rows and their handlers.

#include <vector>

#include "base/signal.h"

namespace velmora {

struct AppContext;

void Wire_About_Handlers(AppContext& ctx, std::vector<Subscription>& links);

}  // namespace velmora
