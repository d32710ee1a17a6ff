#pragma once
// Rows for the five mirror lists of List2, gathered while a long loop adds
// Tracks and put behind the lists' items in one piece at its end. The
// mirrors repeat a few texts ("-", "00:00:00") thousands of times, which a
// list's find index files in one run per text: adding them one by one
// would cost time in the square of the rows.

#include <array>
#include <string>
#include <utility>

#include "core/forms.h"

namespace velmora {

struct MirrorRows {
    std::array<PackedTexts, 5> rows;

    void Add(const std::array<std::string, 5>& texts) {
        for (size_t k = 0; k < rows.size(); ++k) rows[k].push_back(texts[k]);
    }
    // Appends what was gathered to List3_0 and starts empty again.
    void Flush(Form1& f) {
        for (size_t k = 0; k < rows.size(); ++k) {
            if (rows[k].empty()) continue;
            ListBox& mirror = f.List3_0[k];
            PackedTexts items = mirror.Items();
            items.append(rows[k]);
            mirror.Assign(std::move(items));
            rows[k] = PackedTexts();
        }
    }
};

}  // namespace velmora
