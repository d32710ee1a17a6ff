#pragma once
// Finding a text in a list or combo box, as the filter boxes, the searches
// and the intake's double check all do.

#include <string_view>

#include "core/controls.h"

namespace velmora {

// The row of text in a list box (exact: the whole item, else a prefix),
// without regard to case, searching behind start; -1 when absent.
inline int ListBoxFindString(const ListBox& box, std::string_view text, int start, bool exact) {
    return exact ? box.FindExact(text, start) : box.FindPrefix(text, start);
}

}  // namespace velmora
