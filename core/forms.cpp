#include "core/forms.h"

namespace velmora {

std::vector<std::string> Class_Captions() {
    return {"Ασημείωτα - Unmarked", "Κλάση X - Class X", "Κλάση Γ΄ - Class C",
            "Κλάση Β΄ - Class B",   "Κλάση Α΄ - Class A", "Κλάση Υ΄ - Class S"};
}

Form1::Form1() : FormState("Form1") {
    SetVisible(false);
    SetCaption("VELMORA II");
    Combo1.SetSorted(false);
    List2.SetMultiSelect(true);
    List5.SetMultiSelect(true);
    List3.SetMultiSelect(true);
    List1.SetMultiSelect(true);
    // The design pattern, until the first click in the type list replaces it.
    File1.SetPattern("*.mp3;*.mp4");
    // The log keeps its newest lines, some thousands of them: a walk past a
    // drive that is gone logs every one of its files.
    Text2[0].SetKeepBytes(kLogKeepBytes);
    Menus("MnuMoreMinimize").SetVisible(true);
    Tray.TopLevel().front()->SetVisible(false);  // only ever a popup
    Frame1.SetCaption("Αναζήτηση Πολυμέσων - Multimedia Search");
    Frame8.SetCaption("Προσθήκη / Αφαίρεση Αρχείων  από υποφακέλους -  Adding / Removing Files from Subdirectories");
    Frame12.SetCaption("Διαχείριση Αρχείων - Managing Files");
    Frame6.SetCaption("Αποτελέσματα Φίλτρων - Filter Results");
    // The first page shows the ratings information alone.
    for (Frame* frame : {&Frame1, &Frame6, &Frame8, &Frame12}) frame->SetVisible(false);
    for (PictureArea& pane : WindowsMediaPlayer3) pane.SetVisible(false);

    // The catalogue. Box 0 lists the classes by their number and is not
    // sorted; the value boxes keep their values in the case-blind order.
    static constexpr const char* kFieldCaptions[] = {
        "Προτίμηση - Favorite", "Διάρκεια - Duration", "Μέγεθος - Size",     "Ρυθμός - Bit rate", "Είδος - Genre",
        "Άλμπουμ - Album",      "Καλλιτέχνης - Artist", "Έτος - Year",        "Τίτλος - Title"};
    for (int k = 0; k < 9; ++k) {
        Label12[k].SetCaption(kFieldCaptions[k]);
        Combo4_0[k].SetSorted(k > 0);
    }
    Combo4_0[0].Assign(Class_Captions());
    Command16[0].SetCaption("Εκτέλεση");
    Command16[1].SetCaption("Όλα - All");
    Command16[1].SetToolTip("Παρουσίαση όλων δίχως φιλτράρισμα - Present All no Filters used");
    Option3[0].SetCaption("Αντιγραφή - Copy");
    Option3[1].SetCaption("Μετακίνηση - Move");
    Option3[2].SetCaption("Διαγραφή - Delete");
    Option3[0].SetValue(-1);
    Check3.SetCaption("Σε Κάδο Ανακύκλωσης - To Recycle Bin");
    Check4.SetCaption("Διατήρησε Δομή Φακέλων        Keep Directory Tree Information");
    Command19.SetCaption("Φάκελος  Directory");
    Text2[5].SetLocked(true);  // set by the folder picker only
    Command6[0].SetCaption("Αναζήτηση - Search");
    Command6[1].SetCaption("Αντιγραφή Στοιχείων Copy Properties");
    Command17.SetCaption("Αναζήτηση - Search");
    HScroll1.SetMax(2000);

    // The search page as it opens: the folders found take part only with
    // Check2 on, there is no search to stop, and files and folders are taken all.
    static constexpr const char* kTypeButtons[] = {"Όλα - All", "Ήχος- Sound", "Βίντεο - Video", "Λίστες - Lists",
                                                   "Έξτρα - Extra"};
    for (int i = 0; i < 5; ++i) Command7[i].SetCaption(kTypeButtons[i]);
    Command1[0].SetCaption("Επέλεξε Όλους - Select All");
    Command1[1].SetCaption("Αντιστροφή - Invert");
    Command2.SetCaption("Διακοπή - Stop");
    Check2.SetCaption("Yποφάκελοι - Subdirectories        ---->");
    Option4[0].SetCaption("Όλα - All");
    Option4[1].SetCaption("Επιλεγμένα  Selected");
    Option1_0.SetCaption("Όλους - All");
    Option1_1.SetCaption("Επιλεγμένους - Selected");
    Command18[0].SetCaption("Πρόσθεσε Αρχεία Add Files");
    Command18[1].SetCaption("Αφαίρεσε Remove Files");
    Command4.SetCaption("Πρόσθεσε και Αναγνώρισε - Add and Identify");
    Command5.SetCaption("Αφαίρεση - Remove");
    Option4[0].SetValue(-1);
    Option1_0.SetValue(-1);
    List1.SetEnabled(false);
    Command2.SetEnabled(false);
    Frame10.SetVisible(false);
}

}  // namespace velmora
