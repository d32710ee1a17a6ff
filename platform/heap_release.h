#pragma once
// Hands the heap's free pages back to the system. The load of a Collection
// builds and drops temporaries of many megabytes; the allocator keeps the
// pages they leave between blocks still in use, and an idle window would
// hold them for the rest of the run.

namespace velmora {

void Release_Free_Heap();

}  // namespace velmora
