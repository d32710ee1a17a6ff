#pragma once
// The twelve preview panes of the catalogue page: one film, muted, from
// twelve evenly spaced points at once, beside the walk and without touching it.

namespace velmora {

struct AppContext;

// show 0: every pane stops, lets its file go and is hidden. Otherwise, for
// Selected_File: a film fills the panes; any other file stops and hides them.
void Multi_Preview(AppContext& ctx, int show);

// How long the first pane may take to open its film before the others start
// anyway, in milliseconds.
constexpr int kPaneOpenLimit = 5000;

}  // namespace velmora
