#pragma once
// The snooze and countdown window's controls: the moment and the file of the
// alarm, the time left, and whether the trigger is armed.

#include <array>

#include "core/controls.h"

namespace velmora {

struct Form5 : FormState {
    Form5();

    // Ticks once a second while the window is active.
    Timer Timer1{"Form5.Timer1"};

    // By time of day, by countdown: one of the two is always on once either
    // has been clicked. Check3 keeps the calendar's date out of Ok; Check4
    // arms the shut-down.
    CheckBox Check1{"Form5.Check1"};
    CheckBox Check2{"Form5.Check2"};
    CheckBox Check3{"Form5.Check3"};
    CheckBox Check4{"Form5.Check4"};

    // Date, Time, Countdown, Selection, File to Snooze.
    Frame Frame1{"Form5.Frame1"}, Frame2{"Form5.Frame2"}, Frame3{"Form5.Frame3"}, Frame4{"Form5.Frame4"},
        Frame5{"Form5.Frame5"};

    // Exit (0), Ok (1), Cancel (2).
    std::array<CommandButton, 3> Command1{CommandButton{"Form5.Command1(0)"}, CommandButton{"Form5.Command1(1)"},
                                          CommandButton{"Form5.Command1(2)"}};

    // Hours, minutes, seconds of the time of day (0 to 2) and of the
    // countdown (3 to 5), each with its spin control.
    std::array<TextBox, 6> Text1{TextBox{"Form5.Text1(0)"}, TextBox{"Form5.Text1(1)"}, TextBox{"Form5.Text1(2)"},
                                 TextBox{"Form5.Text1(3)"}, TextBox{"Form5.Text1(4)"}, TextBox{"Form5.Text1(5)"}};
    std::array<ScrollBar, 6> VScroll1{ScrollBar{"Form5.VScroll1(0)"}, ScrollBar{"Form5.VScroll1(1)"},
                                      ScrollBar{"Form5.VScroll1(2)"}, ScrollBar{"Form5.VScroll1(3)"},
                                      ScrollBar{"Form5.VScroll1(4)"}, ScrollBar{"Form5.VScroll1(5)"}};

    // The calendar's day as "dd/mm/yyyy".
    TextBox Calendar1{"Form5.Calendar1"};

    Label Label1{"Form5.Label1"};  // the time left: years to seconds
    Label Label2{"Form5.Label2"};  // "Ενεργό - On" or "Ανενεργό - Off"

    ComboBox Combo1{"Form5.Combo1"};  // the files of the alarm's choice
};

}  // namespace velmora
