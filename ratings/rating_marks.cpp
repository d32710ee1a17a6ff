#include "ratings/rating_marks.h"

namespace velmora {

// Marking comes with the ratings work; start-up calls these in their places.
void MnuFavor_Play(AppContext&, int) {}
void DeikseAgapi(AppContext&, int, int) {}
void Update_Class_Labels(AppContext&) {}
void Command8_Click(AppContext&) {}

}  // namespace velmora
