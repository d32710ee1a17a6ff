#pragma once
// The program goes on after most failed calls of its engines and shell, but
// never silently: the failure goes to the log. A call that fails on every
// tick must not flood it, so each call logs its first failure only, and logs
// again only after it has once succeeded in between.

#include <string>

#include "base/result.h"

namespace velmora {

struct AppContext;
class MediaEngine;

// The log's name of an engine port: "player", "reader", "video" or "second".
std::string Engine_Name(const AppContext& ctx, const MediaEngine& engine);

// call names the port and the operation, as in "shell.OpenFolder".
void Log_Failure(AppContext& ctx, const std::string& call, const Status& status);
void Log_Failure(AppContext& ctx, const MediaEngine& engine, const char* operation, const Status& status);

}  // namespace velmora
