#include "platform/linux/heap.h"

#include <cstdlib>  // says whether this is glibc

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

void keepHeapSmall() {
#ifdef __GLIBC__
  constexpr int kBytes = 64 << 10;
  mallopt(M_MMAP_THRESHOLD, kBytes);
  mallopt(M_TRIM_THRESHOLD, kBytes);
  constexpr int kPage = 4 << 10;
  mallopt(M_TOP_PAD, kPage);  // what is left free when it hands memory back
#endif
}

}  // namespace platform
