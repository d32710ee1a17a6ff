#include "core/menu_table.h"

namespace velmora {

namespace {

// clang-format off
const MenuRow kMainMenu[] = {
    {0, "mnuFile", "Αρχεία - Files"},
    {1, "mnufilecollection", "Συλλογή - Collection"},
    {2, "mnufilesnew", "Νέα - New"},
    {2, "mnuFileOpen", "Άνοιγμα - Open"},
    {2, "MnuFileMerge", "Ένωσε Συλλογή - Merge Collection"},
    {2, "mnuFileWindowsMediaPlayer", "Windows Media Player"},
    {3, "mnuFileCreateWPL", "Δημιουργία - Create (*.wpl)"},
    {3, "mnuFileCreateWPL", "Κράτα Ενήμερη -  Keep Updated"},
    {3, "mnuFileCreateWPL", "Άνοιγμα - Open (*.wpl; *.m3u)"},
    {3, "mnuFileCreateWPL", "Ένωσε - Merge (*.wpl; *.m3u)"},
    {2, "mnuFileSave", "Σώσιμο - Save"},
    {2, "mnuFileSaveAs", "Σώσε Ως - Save As"},
    {2, "mnuFileSaveAsAuto", "Αυτόματο Σώσιμο 10΄ -  Automatic Save 10'"},
    {2, "mnuFileReset", "Μηδενισμός - Reset"},
    {2, "mnufiledelete", "Διαγραφή - Delete"},
    {1, "mnufilecollection", "Αντιγραφή - Copy"},
    {2, "MnuFileCopy", "Αντίγραψε Επιλεγμένα - Copy Selected"},
    {2, "MnuFileCopyAll", "Αντίγραψε Όλα - Copy All"},
    {2, "MnuFileCopySClass", "Αντίγραψε Υ΄Κλάση - Copy S' Class"},
    {2, "MnuFileCopyAClass", "Αντίγραψε A΄ Κλάση - Copy A' Class"},
    {2, "MnuFileCopyBClass", "Αντίγραψε B΄ Κλάση - Copy B' Class"},
    {2, "MnuFileCopyCClass", "Αντίγραψε C΄ Κλάση - Copy C' Class"},
    {2, "MnuFileCopyXClass", "Αντίγραψε X΄ Κλάση - Copy X' Class"},
    {2, "MnuFileCopyUnClass", "Αντίγραψε Ασημείωτα - Copy Unmarked"},
    {2, "MnuFilecopyreference", "Αναφορά σε νέα Θέση - Point to new Path"},
    {1, "mnufilecollection", "Μετακίνηση - Move"},
    {2, "mnufilesmove", "Μετακίνηση Επιλεγμένων - Move Selected"},
    {2, "mnufilemoveall", "Μετακίνηση Όλων - Move All"},
    {2, "MnuFileMoveSClass", "Μετακίνησε Υ΄ Κλάση - Move S Class"},
    {2, "MnuFileMoveAClass", "Μετακίνησε Α΄ Κλάση - Move A' Class"},
    {2, "MnuFileMoveBClass", "Μετακίνησε Β΄ Κλάση - Move B' Class"},
    {2, "MnuFileMoveCClass", "Μετακίνησε C΄ Κλάση - Move C' Class"},
    {2, "MnuFileMoveXClass", "Μετακίνησε X΄ Κλάση - Move X' Class"},
    {2, "MnuFileMoveUnClass", "Μετακίνησε Ασημείωτα - Move Unmarked"},
    {2, "MnuFileMoveReference", "Αναφορά σε νέα Θέση - Point to new Path"},
    {1, "mnufilecollection", "Διαγραφή - Delete"},
    {2, "mnufiledeleteS", "Διέγραψε Υ΄ Κλάση - Delete S' Class"},
    {2, "mnufiledeleteA", "Διέγραψε Α΄ Κλάση - Delete A' Class"},
    {2, "mnufiledeleteB", "Διέγραψε Β΄ Κλάση - Delete B' Class"},
    {2, "mnufiledeleteC", "Διέγραψε Γ΄ Κλάση - Delete C'  Class"},
    {2, "mnufiledeleteX", "Διέγραψε Χ΄ Κλάση - Delete X' Class"},
    {2, "mnufiledeleteunclass", "Διέγραψε Ασημείωτα -  Delete Unmarked"},
    {2, "mnufilesdelete", "Διέγραψε Επιλεγμένα - Delete Selected"},
    {2, "mnufiledeleteall", "Διέγραψε Όλα - Delete All"},
    {2, "mnufiledeletedisk", "Διαγραφή από τον δίσκο - Delete from disk"},
    {2, "mnufiledeleterecycle", "Σε Κάδο Ανακύκλωσης - To Recycle Bin"},
    {2, "mnufiledeleteevendiskerror", "Διαγραφή από Συλλογή σε Λάθος Δίσκου - Remove from Collection even on Disk Error"},
    {1, "mnufilecollection", "Έξοδος - Exit"},
    {0, "MnuPlay", "Αναπαραγωγή - Play"},
    {1, "MnuMoreAutoStart", "Αυτόματη εκκίνηση στην είσοδο - Autostart on Run"},
    {1, "MnuPlayAutoStartPoint", "Σημείο Εκκίνησης - Autostarting Point"},
    {2, "MnuPlayAutoStartP", "Αρχή αρχείου - Beggining of file"},
    {2, "MnuPlayAutoStartP", "Σημείο εξόδου τελευταίου αρχείου - Last File's Exit Point"},
    {2, "MnuPlayAutoStartP", "Σημείο εξόδου κάθε αρχείου - Last exit point of each file"},
    {1, "MnuMoreRandom", "Τυχαία Εκτέλεση - Suffle Play"},
    {1, "MnuMorePreview", "Προεπισκόπιση - Preview"},
    {2, "MnuMorePreview_Active", "Ενεργή - Active"},
    {2, "MnuMoreDuration", "Διάρκεια Προεπισκόπησης - Preview Duration"},
    {2, "MnuMoreMultiPreview", "Προεπισκόπηση 4 Σημείων - 4 Points Preview"},
    {1, "MnuMorePause", "Παύση μεταξύ Αρχείων -  Pause Between Files"},
    {2, "MnuMorePauseActive", "Ενεργή - Active"},
    {2, "MnuMorePauseDur", "Διάρκεια Παύσης - Pause Duration"},
    {1, "MnuMoreSound", "Ήχος μεταξύ Αρχείων - Sound Between Files"},
    {1, "mnumorereplay", "Επανάληψη - Replay"},
    {2, "mnumorereplayn", "Κανένα - None"},
    {2, "mnumorereplayn", "Ενός - One"},
    {2, "mnumorereplayn", "Όλων - All"},
    {1, "MnuMoreWindows", "Εκκίνηση με Windows - Run at System Start"},
    {1, "MnuMoreFavor", "Παίζε μόνο Προτίμηση - Play only Rating"},
    {2, "MnuMorePlayS", "Κλάσεως Υ΄ - Class S"},
    {2, "MnuMorePlayA", "Κλάσεως Α΄- Class A"},
    {2, "MnuMorePlayB", "Κλάσεως Β΄- Class B"},
    {2, "MnuMorePlayC", "Κλάσεως Γ΄- Class C"},
    {2, "MnuMorePlayAll", "Όλων - All"},
    {2, "MnuMorePlayX", " Κλάσεως Χ - Class X"},
    {2, "MnuMorePlayUnClass", "Ασημείωτα - Unmarked"},
    {0, "mnufavorites", "Προτίμηση - Rating"},
    {1, "MenuMoreFavor", "Επέλεξε - Select"},
    {2, "MnuMoreClassS", "Κλάσεως Υ΄- Class S"},
    {2, "MnuMoreClassA", "Κλάσεως Α΄- Class A"},
    {2, "MnuMoreClassB", "Κλάσεως Β΄- Class B"},
    {2, "MnuMoreClassC", "Κλάσεως Γ΄- Class C"},
    {2, "MnuMoreClassAll", "Όλα - All"},
    {2, "MnuMoreClassX", "Κλάσεως X - Class X"},
    {2, "MnuMoreUnClass", "Ασημείωτα - Unmarked"},
    {1, "MnuMoreCheckFavorites", "Έλεγξε Αγαπημένα - Check Favorites"},
    {1, "mnufilefavorreset", "Μηδενισμός Προτιμήσεων - Delete Ratings"},
    {1, "MnuFavorAuto2", "Αυτόματο - Auto"},
    {1, "MnuMoreFavorWithinFiles", "Σώζε Προτιμήσεις εντός αρχείων -  Save Ratings within Files"},
    {1, "MnuMoreReadFavorFromFiles", "Ανάγνωσε Προτιμήσεις Συλλογής από Αρχεία -  Read Collection Ratings from Files"},
    {1, "MnuMoreSaveFavorWithinFiles", "Γράψε Προτιμήσεις Συλλογής στα αρχεία -  Save Collection Ratings within Files"},
    {1, "MnuMoreDemandFavor", "Να απαιτεί καταχώρηση αγαπημένου - Demand favorite set  "},
    {0, "MnuFilters", "Φίλτρα - Filters"},
    {1, "MnuMoreFiltersRemake", "Εκβιασμένη Δημιουργία Φίλτρων - Force Filters Remake"},
    {1, "MnuMoreFileSizes", "Αναγνώριση Ιδιοτήτων Αρχείων - Files Properties Indetification"},
    {2, "MnuMoreFileSizesReadRatings", "Διάβαζε Προτιμήσεις από αρχεία - Read Ratings from Files"},
    {2, "MnuMoreFileSizesKeepRatings", "Διατήρηση Προσωπικών Προτιμήσεων - Keep Personal Ratings"},
    {2, "MnuMoreFileSizesUnknonw", "Συνέχιση - Continue"},
    {2, "MnuMoreFileSizesAll", "Νέα - New"},
    {1, "MnuFiltersLoad", "Φόρτωνε Φίλτρα - Load Filters"},
    {0, "MnuMoreMinimize", "Ελαχιστοποίηση - Minimize"},
    {0, "MnuMore", "Περισσότερα - More"},
    {1, "MnuMoreOnTop", "Πάντα σε πρώτο πλάνο - Always on top"},
    {1, "MnuMoreReport", "Αναφορές Αρχείων - Files Reports -> [Directory_Media_Player_Report.txt]"},
    {1, "MnuMoreReportDelete", "Διέγραψε Αρχείο Αναφορών - Delete Report File"},
    {1, "mnumorestars", "Χρώματα Αστέρων - Star Colors"},
    {2, "MnumoreStar_Active", "Ενεργά - Enabled"},
    {2, "MnumoreStar_Colors", "Χρυσό - Gold"},
    {2, "MnumoreStar_Colors", "Μπλέ - Blue"},
    {2, "MnumoreStar_Colors", "Μπλε Μαύρο - Black Blue"},
    {2, "MnumoreStar_Colors", "Μεικτό - Mix"},
    {2, "MnumoreStar_Active", "Ανενεργά - Disabled"},
    {1, "mnumorevinteo", "Βίντεο - Video"},
    {2, "mnuvideoshow", "Δείξε - Show"},
    {2, "mnuvideoshow", "Κρύψε - Hide"},
    {2, "mnuvideoshow", "Αυτόματο - Auto"},
    {1, "mnureplaysleep", "Κατάσταση Ύπνου - Sleep Mode"},
    {2, "mnurepeatsleepstart", "Εκκίνηση - Start"},
    {2, "mnurepeatsleepvolume", "Μείωση Έντασης - Decrease Volume"},
    {2, "mnurepeatalarm", "Ξυπνητήρι - Alarm"},
    {2, "mnurepeatoff", "Σβήσε Υπολογιστή - Turn Off PC"},
    {2, "mnurepeatexit", "Τερματισμός Προγράμματος - Exit Program"},
    {2, "mnurepeatsleeprestore", "Επαναφορά - Restore"},
    {0, "mnutimetrig", "Διακόπτες - Triggers"},
    {1, "mnutimeshut", "Αυτόματο Kλείσιμο - Auto Shut Down"},
    {1, "mnutimesnooze", "Ξυπνητήρι - Snooze"},
    {0, "mnuinfo", "Πληροφορίες - About"},
    {1, "mnu_info2", "Πληροφορίες - Information"},
    {2, "mnuinfogr", "Ελληνικά"},
    {2, "mnuinfogr", "English"},
    {1, "mnu_info2", "Στατιστικά - Statistics"},
    {2, "mnustats", "Δείξε - Show"},
    {2, "mnustatsreset", "Μηδενισμός - Reset"},
    {1, "mnu_info2", "Προγραμματισμός - Programming"},
    {1, "mnu_info2", "Οθόνη Εκκίνησης - Startup Screen"},
    {1, "mnu_info2", "Ιστοσελίδα - Webpage"},
    {1, "mnu_info2", "Βοήθεια - Help"},
    {1, "mnu_info2", "Email"},
};

// Hidden from the bar; shown only as the tray's popup.
const MenuRow kTrayMenu[] = {
    {0, "MnuSystemTray", "MnuSystemTray"},
    {1, "MnuSystemTrayTop", "Πάντα σε πρώτο πλάνο - Always on top"},
    {1, "MnuSystemTrayFavor", "Παίζε μόνο - Play only"},
    {2, "TrayFavorPlayS", "Κλάσεως Υ΄- Class S"},
    {2, "TrayFavorPlayA", "Κλάσεως Α΄- Class A"},
    {2, "TrayFavorPlayB", "Κλάσεως Β΄- Class B"},
    {2, "TrayFavorPlayC", "Κλάσεως Γ΄- Class C"},
    {2, "TrayFavorPlayAll", "Όλων - All"},
    {2, "TrayFavorPlayX", "Κλάσεως X -  Class X"},
    {2, "TrayFavorPlayUnClass", "Ασημείωτα - Unmarked"},
    {1, "mnusystemtrayforward", "Μπροστά - Forward"},
    {1, "mnusystemtraybackwards", "Πίσω - Backward"},
    {1, "mnusystemtraysuffle", "Τυχαία - Suffle"},
    {1, "mnusystrayrepeat", "Επανάληψη Ένα - Replay One"},
    {1, "MnuSysTrayDaCapo", "Da Capo"},
    {1, "MnuSystemTray_Favor", "Προτίμηση - Rating"},
    {2, "TrayFavorS", "Κλάσεως Υ΄- Class S"},
    {2, "TrayFavorA", "Κλάσεως Α΄- Class A"},
    {2, "TrayFavorB", "Κλάσεως Β΄- Class B"},
    {2, "TrayFavorC", "Κλάσεως Γ΄- Class C"},
    {2, "TrayFavorX", "Κλάσεως X - Class X"},
    {2, "TrayFavorUnclass", "Ασημείωτα - Unmarked"},
    {2, "TrayFavorAuto", "Αυτόματο - Auto"},
    {1, "mnusystemtraycopypaste", "Αντιγραφή Στοιχείων - Copy Properties"},
    {1, "mnusystemtraypause", "Παύση - Pause"},
    {1, "mnusystemtrayback", "Προηγούμενο - Back"},
    {1, "mnusystemtraynext", "Επόμενο - Next"},
    {1, "mnusystemtraycancel", "Άκυρο - Cancel"},
    {1, "mnusystemtrayexit", "Έξοδος - Quit"},
};
// clang-format on

}  // namespace

std::span<const MenuRow> MainMenuRows() { return kMainMenu; }
std::span<const MenuRow> TrayMenuRows() { return kTrayMenu; }

MenuSet::MenuSet(std::span<const MenuRow> rows) {
    std::vector<MenuItem*> parents;  // the open menu at each depth
    for (const MenuRow& row : rows) {
        auto& same = m_by_name[row.name];
        auto item = std::make_unique<MenuItem>(row.name, static_cast<int>(same.size()));
        item->SetCaption(row.caption);
        MenuItem* p = item.get();
        same.push_back(p);
        parents.resize(static_cast<size_t>(row.depth));
        if (row.depth == 0) m_top.push_back(p);
        else parents.back()->Children().push_back(p);
        parents.push_back(p);
        m_items.push_back(std::move(item));
    }
}

MenuItem& MenuSet::operator()(std::string_view name, int index) {
    auto it = m_by_name.find(std::string(name));
    if (it == m_by_name.end() || index < 0 || index >= static_cast<int>(it->second.size())) {
        m_missed.push_back(std::string(name) + "(" + std::to_string(index) + ")");
        return m_missing;
    }
    return *it->second[index];
}

bool MenuSet::Has(std::string_view name, int index) const {
    auto it = m_by_name.find(std::string(name));
    return it != m_by_name.end() && index >= 0 && index < static_cast<int>(it->second.size());
}

}  // namespace velmora
