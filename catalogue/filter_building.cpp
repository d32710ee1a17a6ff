#include "catalogue/filter_building.h"

namespace velmora {

// The catalogue is built in its own work; start-up calls these in their places.
void Add_Filters(AppContext&) {}
void Reboot_Filters(AppContext&) {}
void Filtered_Songs_List(AppContext&, int) {}

}  // namespace velmora
