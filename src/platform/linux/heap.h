#pragma once

namespace platform {

/// Makes the C library return free memory at the heap's end to the system at once, instead of
/// keeping what it once needed at most, because the program is idle nearly all the time. To be
/// called first.
void keepHeapSmall();

}  // namespace platform
