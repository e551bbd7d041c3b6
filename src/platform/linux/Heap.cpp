#include "platform/linux/Heap.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace moorline {

void shareHeap()
{
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 2);
#endif
}

void trimHeap()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace moorline
