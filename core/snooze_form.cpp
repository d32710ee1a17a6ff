#include "core/snooze_form.h"

namespace velmora {

Form5::Form5() : FormState("Form5") {
    SetVisible(false);
    SetCaption("Ξυπνητήρι - Snooze");
    // Runs only while the window is active.
    Timer1.SetInterval(1000);
    Check1.SetCaption("Ώρα - Time");
    Check2.SetCaption("Αντίστροφη Μέτρηση - Countdown");
    Check3.SetCaption("Ημερολόγιο - Calendar");
    Check4.SetCaption("Κλείσιμο - Shutdown");
    Frame1.SetCaption("Ημερομηνία - Date");
    Frame2.SetCaption("Ώρα - Time");
    Frame3.SetCaption("Αντίστροφη Μέτρηση - Countdown");
    Frame4.SetCaption("Επιλογή - Selection");
    Frame5.SetCaption("Αρχείο Ξυπνητήρι - File to Snooze");
    Command1[0].SetCaption("Έξοδος Exit");
    Command1[1].SetCaption("Εντάξει Ok");
    Command1[2].SetCaption("Ακύρωση Cancel");
    // Hours reach 23 on the clock and 24 in the countdown, as the box allows.
    static constexpr int kMax[6] = {23, 59, 59, 24, 59, 59};
    for (int i = 0; i < 6; ++i) {
        VScroll1[i].SetMax(kMax[i]);
        Text1[i].SetText("00");
    }
}

}  // namespace velmora
