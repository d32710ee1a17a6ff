#pragma once
// The controls of the tag page and of the search links that only those two
// use: the captions of the tag boxes, the add and remove choice, the search
// switch and the link button. The boxes themselves (Text1_0 to Text1_4,
// Combo1, Picture1, Command14, Combo3, Text2(3), Command6(1)) stand with the
// rest of the main window.

#include <array>

#include "core/controls.h"

namespace velmora {

struct MetadataControls {
    MetadataControls();

    // The caption of each tag box, Label1(5) that of the genre list.
    std::array<Label, 6> Label1{Label{"Label1(0)"}, Label{"Label1(1)"}, Label{"Label1(2)"},
                                Label{"Label1(3)"}, Label{"Label1(4)"}, Label{"Label1(5)"}};
    Frame Tag_Frame{"Tag_Frame"};  // "Στοιχεία Αρχείων Mp3 - Mp3 File Properties"
    // Add a link (0) or remove the chosen one (1), by Command13.
    std::array<OptionButton, 2> Option2{OptionButton{"Option2(0)"}, OptionButton{"Option2(1)"}};
    CommandButton Command13{"Command13"};
    CheckBox Check1{"Check1"};  // a copy of the properties also searches the web
};

}  // namespace velmora
