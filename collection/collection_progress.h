#pragma once
// The progress bar number 1 of the main window, as the Collection's long
// loops draw it: the bar's width in percent and its label. The shared
// progress routine of the ratings work draws the same two controls.

#include <algorithm>
#include <cstdint>

#include "core/text_format.h"
#include "desktop/forms.h"

namespace velmora {

inline void Draw_Collection_Progress(Form1& f, int64_t current, int64_t total) {
    if (total <= 0) return;
    const int64_t value = 100 * std::clamp<int64_t>(current, 0, total) / total;
    f.Shape1[1].SetWidth(static_cast<int>(value));
    f.Label11[1].SetCaption(Format(value, "000") + "%");
}

}  // namespace velmora
