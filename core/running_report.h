#pragma once
// The running report: the log box Text2(0), newest line first with the time
// in front, and the report file the long operations copy it to.

#include <string>

namespace velmora {

struct AppContext;

// Puts the time and the text in front of the log, then a line break.
void Log_Line(AppContext& ctx, const std::string& text);

// velmora_reports/velmora_report.txt below the program's folder.
std::string Report_File(const AppContext& ctx);
// Shows the size of the report file at start, and whether it can be deleted.
void Report_Size(AppContext& ctx);
// start -1 opens the report and writes the head of a block; any other value
// writes the whole log as the block's body and closes the report. Every
// error is logged and dropped: a failed report never stops the operation.
void Report_Block(AppContext& ctx, int start);
void Delete_Report(AppContext& ctx);
// The menu rows of the report: MnuMoreReport toggles its mark, and
// MnuMoreReportDelete deletes the file. The links live in ctx.report.
void Wire_Report_Menus(AppContext& ctx);

}  // namespace velmora
