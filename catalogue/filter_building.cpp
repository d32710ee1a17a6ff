#include "catalogue/filter_building.h"

#include "core/app_context.h"

namespace velmora {

namespace {

constexpr const char* kRemakeQuestion =
    "Θέλετε να δημιουργήσετε νέα φίλτρα για τα αρχεία σας; Αυτό μπορεί να απαιτήσει χρόνο.\n"
    "Would you like to remake the song filters? This action could take some time to complete. ";

}  // namespace

// The catalogue is built in its own work; start-up calls these in their places.
void Add_Filters(AppContext&) {}
void Reboot_Filters(AppContext&) {}
void Filtered_Songs_List(AppContext&, int) {}

void Remake_Filters(AppContext& ctx) {
    Add_Filters(ctx);
    ctx.ports.loop.DoEvents();
    Reboot_Filters(ctx);
    Filtered_Songs_List(ctx, -1);
}

void MnuMoreFiltersRemake_Click(AppContext& ctx) {
    MultiPage& pages = ctx.form1.MultiPage1;
    const int page = pages.Value();
    // The question is asked over the catalogue page, whose lists it rebuilds.
    pages.SetValue(1);
    if (ctx.ports.dialogs.MsgBox(kRemakeQuestion, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) {
        pages.SetValue(page);
        return;
    }
    Remake_Filters(ctx);
}

}  // namespace velmora
