#include "core/metadata_controls.h"

namespace velmora {

MetadataControls::MetadataControls() {
    static constexpr const char* kTagCaptions[] = {"Τίτλος - Title",  "Καλλιτέχνης - Artist", "Άλμπουμ - Album",
                                                   "Έτος - Year",     "Σχόλιο - Comment",     "Είδος - Genre"};
    for (size_t i = 0; i < Label1.size(); ++i) Label1[i].SetCaption(kTagCaptions[i]);
    Tag_Frame.SetCaption("Στοιχεία Αρχείων Mp3 - Mp3 File Properties");
    Option2[0].SetCaption("Πρόσθεσε νέα διεύθυνση - Add a new URL link");
    Option2[1].SetCaption("Αφαίρεσε διεύθυνση διαδικτύου - Remove URL link");
    Option2[0].SetValue(-1);
    Command13.SetCaption("Σύνδεσμος - Link");
    Check1.SetCaption("Aναζήτηση στο διαδίκτυο ενεργή - Search on the Internet");
    Check1.SetValue(1);
}

}  // namespace velmora
