#include "collection/collection_file.h"

namespace velmora {

// Filled in with the collection file format; start-up calls them in their places.
void Load_Pointer(AppContext&) {}
void Save_Pointer(AppContext&) {}
void Load_Collection(AppContext&) {}
void Save_Collection(AppContext&, bool, bool) {}

}  // namespace velmora
