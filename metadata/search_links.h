#pragma once
// The search links of the current Track: adding and removing them, and the
// copy of the Track's properties that searches the web with the first link.

#include <string>

namespace velmora {

struct AppContext;

// Adds Text2(3) as a link or removes the chosen one, by Option2.
void Command13_Click(AppContext& ctx);
// Title and artist (or the file's name) to the clipboard, and the search
// opened when Check1 is on. Command6(1) and the tray's row.
void mnusystemtraycopypaste_Click(AppContext& ctx);
// The text with every byte outside the URL's unreserved set written as %XX,
// so that blanks and Greek letters reach the search as typed.
std::string Url_Query_Text(const std::string& text);

}  // namespace velmora
