#pragma once
// The two searches of the catalogue: every row holding a text is selected.

namespace velmora {

struct AppContext;

// Index 0: the boxes emptied, then the rows of List4 holding the text of
// Text2(3) selected, on the catalogue page. Other indexes copy the Track's
// properties and are not the search's.
void Command6_Click(AppContext& ctx, int index);
// The rows of the list in view holding the text of Text2(4) selected, the
// others not; the head rows never.
void Command17_Click(AppContext& ctx);

}  // namespace velmora
