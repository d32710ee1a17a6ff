#pragma once
// The Track list and its mirror boxes are disabled while they fill in bulk,
// so that a view need not follow them row by row.

namespace velmora {

struct Form1;

// List2 first, then each box of List3_0 upward.
void Make_Invisible(Form1& f);
void Make_Visible(Form1& f);

}  // namespace velmora
