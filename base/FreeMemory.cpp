#include "base/FreeMemory.h"

#include <cstdlib> // says which C library this is
#ifdef __GLIBC__
#include <malloc.h>
#endif

void returnFreeMemory()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}
