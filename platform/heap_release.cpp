#include "platform/heap_release.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace velmora {

void Release_Free_Heap() {
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

}  // namespace velmora
