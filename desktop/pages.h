#pragma once
// The page group of the main window.

namespace velmora {

struct AppContext;

// Another page was chosen, by the user or by the logic: the subfolder mode
// of the search page ends with any change of page.
void MultiPage1_Change(AppContext& ctx);

}  // namespace velmora
