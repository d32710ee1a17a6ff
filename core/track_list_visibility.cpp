#include "core/track_list_visibility.h"

#include "core/forms.h"

namespace velmora {

void Make_Invisible(Form1& f) {
    f.List2.SetEnabled(false);
    for (ListBox& mirror : f.List3_0) mirror.SetEnabled(false);
}

void Make_Visible(Form1& f) {
    f.List2.SetEnabled(true);
    for (ListBox& mirror : f.List3_0) mirror.SetEnabled(true);
}

}  // namespace velmora
