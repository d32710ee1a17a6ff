#pragma once
// The About menu: the texts about the program, the statistics of playing,
// the start screen switch, the slide show, the web page, help and mail.

#include <string>

namespace velmora {

struct AppContext;

extern const char* const kWebPage;
extern const char* const kMailAddress;
extern const char* const kHelpFile;

// The program's version, as the about texts show it.
std::string Program_Version();

// The about text, index 0 in Greek, 1 in English, with the version.
std::string About_Text(int index);
void mnuinfogr_Click(AppContext& ctx, int index);

// The played files and the time spent playing, in Greek and in English.
std::string Statistics_Text(const AppContext& ctx);
void mnustats_Click(AppContext& ctx);
// Asks first; OK sets every counter to zero.
void mnustatsreset_Click(AppContext& ctx);

// Where the help page is: beside the program when it runs from its build or
// its own folder, else where an installation puts shared files.
std::string Help_Page_Path(const AppContext& ctx);

// The rows of "Πληροφορίες - Information": 2 the slide show, 3 the start
// screen switch, 4 the web page, 5 help, 6 mail.
void mnu_info2_Click(AppContext& ctx, int index);

}  // namespace velmora
