#include "platform/heap.h"

#include <cstdlib>  // defines __GLIBC__ where the C library is glibc

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

void keepHeapSmall() {
#ifdef __GLIBC__
  constexpr int kBytes = 16 << 10;
  mallopt(M_MMAP_THRESHOLD, kBytes);
  mallopt(M_TRIM_THRESHOLD, kBytes);
  constexpr int kPage = 4 << 10;
  mallopt(M_TOP_PAD, kPage);  // what it keeps when it returns memory
#endif
}

void returnFreeMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace platform
