#include "core/progress.h"

#include <algorithm>

#include "base/text_format.h"
#include "core/forms.h"

namespace velmora {

void Show_Progress(Form1& f, int64_t current, int64_t total, int bar) {
    if (total <= 0 || bar < 0 || bar >= static_cast<int>(f.Shape1.size())) return;
    constexpr int64_t kMax = 100;  // the bar is drawn as a width in percent
    const int64_t value = kMax * std::clamp<int64_t>(current, 0, total) / total;
    f.Shape1[bar].SetWidth(static_cast<int>(value));
    f.Label11[bar].SetCaption(Format(100 * value / kMax, "000") + "%");
}

}  // namespace velmora
