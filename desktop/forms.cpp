#include "desktop/forms.h"

namespace velmora {

Form1::Form1() : FormState("Form1") {
    SetVisible(false);
    SetCaption("VELMORA II");
    Combo1.SetSorted(false);
    List2.SetMultiSelect(true);
    List5.SetMultiSelect(true);
    List3.SetMultiSelect(true);
    List1.SetMultiSelect(true);
    // The log keeps its newest lines, some thousands of them: a walk past a
    // drive that is gone logs every one of its files.
    Text2[0].SetKeepBytes(kLogKeepBytes);
    Menus("MnuMoreMinimize").SetVisible(true);
    Tray.TopLevel().front()->SetVisible(false);  // only ever a popup
    Frame1.SetCaption("Αναζήτηση Πολυμέσων - Multimedia Search");
    Frame8.SetCaption("Προσθήκη / Αφαίρεση Αρχείων  από υποφακέλους -  Adding / Removing Files from Subdirectories");
    Frame12.SetCaption("Διαχείριση Αρχείων - Managing Files");
    HScroll1.SetMax(2000);
}

}  // namespace velmora
