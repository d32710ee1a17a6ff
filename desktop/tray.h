#pragma once
// The start with the desktop session.

#include <string>

namespace velmora {

struct AppContext;

bool Run_Key_Exists(AppContext& ctx, const std::string& name);

}  // namespace velmora
