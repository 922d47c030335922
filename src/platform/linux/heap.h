#pragma once

namespace platform {

/// Makes the C library hand memory back to the system as soon as some of it is free at the
/// heap's end, instead of keeping what the largest moment took: the program is at rest nearly
/// all the time. To be called first.
void keepHeapSmall();

}  // namespace platform
