#pragma once
// The page group of the main window.

#include "core/forms.h"

namespace velmora {

struct AppContext;

// The page of the filter results.
constexpr int kResultsPage = 4;

// Another page was chosen, by the user or by the logic: the subfolder mode
// of the search page ends with any change of page, and the filter results
// are brought up to date when rows came or went since they were made.
void MultiPage1_Change(AppContext& ctx);

// The caption of each page's tab: what the page holds.
const char* Page_Caption(int page);

// Shown where the Track list stands while it is empty, for whoever starts
// with no Collection: where media come from.
extern const char* const kEmptyCollectionHint;

// The one frame a page of the group shows.
Frame& Page_Frame(Form1& f, int page);

}  // namespace velmora
