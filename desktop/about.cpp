#include "desktop/about.h"

#include <filesystem>

#include "base/text_format.h"
#include "core/app_context.h"

#ifndef VELMORA_VERSION
#error "the build gives the program's version"
#endif

namespace velmora {

const char* const kWebPage = "https://velmora.example.org/";
const char* const kMailAddress = "velmora@example.org";
const char* const kHelpFile = "velmora_help.htm";

std::string Program_Version() { return VELMORA_VERSION; }

std::string About_Text(int index) {
    if (index == 0)
        return "Velmora II\n\n"
               "Παίζει όλα τα αρχεία πολυμέσων μιας Συλλογής, το ένα μετά το άλλο, σειριακά ή τυχαία, "
               "και θυμάται το τελευταίο αρχείο και το σημείο όπου σταμάτησε, ώστε η επόμενη εκκίνηση "
               "να συνεχίσει από εκεί χωρίς ερώτηση. Έχει και Κατάσταση Προεπισκόπησης, που δοκιμάζει "
               "ένα κομμάτι από κάθε αρχείο.\n\n"
               "Έκδοση " + Program_Version();
    return "Velmora II\n\n"
           "It plays all media files of a Collection one after the other, in serial or shuffled order, "
           "and remembers the last file and the position where it stopped, so that the next run goes on "
           "from there without a question. It also has the Preview Mode, which samples a part of each "
           "file.\n\n"
           "Version " + Program_Version();
}

void mnuinfogr_Click(AppContext& ctx, int index) {
    ctx.ports.dialogs.MsgBox(About_Text(index), MsgButtons::OK, MsgIcon::Information,
                             index == 0 ? "Πληροφορίες" : "About");
}

std::string Statistics_Text(const AppContext& ctx) {
    const CollectionState& c = ctx.collection;
    const std::string y = Str(c.Stat_Years), mo = Str(c.Stat_Months), d = Str(c.Stat_Days), h = Str(c.Stat_Hours),
                      mi = Str(c.Stat_Minutes), s = Str(c.Stat_Seconds);
    return Str(c.Stat_Files) + " Αρχεία - Files:\n" +
           "Διάρκεια Αναπαραγωγής -> " + y + " Χρόνια - " + mo + " Μήνες - " + d + " Ημέρες - " + h + " Ώρες - " +
           mi + " Λεπτά - " + s + ": Δευτερόλεπτα \n" +
           "Reproduce Duration ->> " + y + " Years - " + mo + " Months - " + d + " Days - " + h + " Hours - " + mi +
           " Minutes - " + s + ": Seconds ";
}

void mnustats_Click(AppContext& ctx) {
    ctx.ports.dialogs.MsgBox(Statistics_Text(ctx), MsgButtons::OK, MsgIcon::Information,
                             "Στατιστικά - Statistics");
}

void mnustatsreset_Click(AppContext& ctx) {
    if (ctx.ports.dialogs.MsgBox("Επιβεβαιώστε Μηδενισμό Στατιστικών - Confirm Reset of Statistics",
                                 MsgButtons::OKCancel, MsgIcon::Question, "Στατιστικά - Statistics") != MsgAnswer::OK)
        return;
    CollectionState& c = ctx.collection;
    for (int32_t* counter : {&c.Stat_Files, &c.Stat_Years, &c.Stat_Months, &c.Stat_Days, &c.Stat_Hours,
                             &c.Stat_Minutes, &c.Stat_Seconds})
        *counter = 0;
}

std::string Help_Page_Path(const AppContext& ctx) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const std::string beside = ctx.core.App_Path + kHelpFile;
    if (fs::is_regular_file(beside, ec)) return beside;
    if (!ctx.program_folder.empty()) {
        const fs::path installed = fs::path(ctx.program_folder) / ".." / "share" / "velmora" / kHelpFile;
        if (fs::is_regular_file(installed, ec)) return fs::weakly_canonical(installed, ec).string();
    }
    return beside;
}

void mnu_info2_Click(AppContext& ctx, int index) {
    Shell& shell = ctx.ports.shell;
    switch (index) {
        case 2: ctx.form3.Show(); break;
        case 3: {
            int16_t& shown = ctx.settings.Splash_Show;
            shown = shown == -1 ? 0 : -1;
            ctx.form1.Menus("mnu_info2", 3).SetChecked(shown == -1);
            break;
        }
        // A link the desktop cannot open is no matter for the user here.
        case 4: (void)shell.OpenUrl(kWebPage); break;
        // The bare path: the shell opens an absolute path as a file, and a
        // '#' or '%' in a folder's name would spoil it as a file:// link.
        case 5: (void)shell.OpenUrl(Help_Page_Path(ctx)); break;
        case 6: (void)shell.OpenUrl(std::string("mailto:") + kMailAddress); break;
        default: break;
    }
}

}  // namespace velmora
