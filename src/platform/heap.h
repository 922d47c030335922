#pragma once

namespace platform {

/// Makes the C library return free memory at the heap's end to the system at once, instead of
/// keeping what it once needed at most, because the program is idle nearly all the time. To be
/// called first.
void keepHeapSmall();

/// Returns free memory in the heap's midst too. Takes about 0.1 ms: for when much was freed.
void returnFreeMemory();

}  // namespace platform
