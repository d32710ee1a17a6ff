#pragma once
// The page group of the main window.

namespace velmora {

struct AppContext;

// The page of the filter results.
constexpr int kResultsPage = 4;

// Another page was chosen, by the user or by the logic: the subfolder mode
// of the search page ends with any change of page, and the filter results
// are brought up to date when rows came or went since they were made.
void MultiPage1_Change(AppContext& ctx);

}  // namespace velmora
