#pragma once
// The progress bar number 1 of the main window, as the Collection's long
// loops draw it: the shared progress routine of the ratings work.

#include <cstdint>

#include "desktop/forms.h"
#include "ratings/rating_calculation.h"

namespace velmora {

inline void Draw_Collection_Progress(Form1& f, int64_t current, int64_t total) { Show_Progress(f, current, total, 1); }

}  // namespace velmora
