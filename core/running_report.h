#pragma once
// The running report: the log box Text2(0), newest line first with the time
// in front, and the report file the long operations copy it to.

#include <string>

namespace velmora {

struct AppContext;

// Puts the time and the text in front of the log, then a line break.
void Log_Line(AppContext& ctx, const std::string& text);
// Shows the size of the report file at start.
void Report_Size(AppContext& ctx);

}  // namespace velmora
