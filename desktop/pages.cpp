#include "desktop/pages.h"

#include <array>
#include <iterator>

#include "catalogue/filter_query.h"
#include "core/app_context.h"
#include "intake/directory_search.h"
#include "playback/preview_panes.h"

namespace velmora {

namespace {

// The page of the managing frame; page 0 and any value out of range keep
// the ratings information.
constexpr int kManagingPage = 1;

// Short, so that the five tabs fit side by side; the frames' own captions
// say the rest.
constexpr const char* kPageCaptions[] = {"Κλάσεις - Classes", "Αρχεία - Files", "Αναζήτηση - Search",
                                         "Φάκελοι - Folders", "Φίλτρα - Filters"};

}  // namespace

const char* const kEmptyCollectionHint =
    "Η Συλλογή είναι άδεια: προσθέστε αρχεία από τη σελίδα «Αναζήτηση», ή σύρετέ τα εδώ - "
    "The Collection is empty: add files from the \"Search\" page, or drop them here";

const char* Page_Caption(int page) {
    return page >= 0 && page < static_cast<int>(std::size(kPageCaptions)) ? kPageCaptions[page] : "";
}

Frame& Page_Frame(Form1& f, int page) {
    switch (page) {
        case 2: return f.Frame1;
        case 3: return f.Frame8;
        case kResultsPage: return f.Frame6;
        case kManagingPage: return f.Frame12;
        default: return f.Frame4;
    }
}

void MultiPage1_Change(AppContext& ctx) {
    Form1& f = ctx.form1;
    Set_Check2(ctx, 0);
    if (f.MultiPage1.Value() == kResultsPage) Refresh_Stale_Results(ctx);
    // The results frame, and the preview panes in it, show on their page
    // alone; leaving it stops the panes.
    const bool results_were_shown = f.Frame6.Visible();
    Frame& shown = Page_Frame(f, f.MultiPage1.Value());
    // The page group holds one place: every frame but the page's own goes.
    for (Frame* frame : std::array{&f.Frame1, &f.Frame4, &f.Frame6, &f.Frame8, &f.Frame12})
        frame->SetVisible(frame == &shown);
    if (results_were_shown && !f.Frame6.Visible()) Multi_Preview(ctx, 0);
}

}  // namespace velmora
