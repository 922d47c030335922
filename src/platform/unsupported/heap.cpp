#include "platform/heap.h"

namespace platform {

void keepHeapSmall() {}

void returnFreeMemory() {}

}  // namespace platform
