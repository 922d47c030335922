#pragma once

#include <cstdint>

namespace bench {

/// How often the calling thread has asked for memory so far. The bench replaces operator new
/// for this; what C libraries take by malloc is not counted.
std::uint64_t allocationCount();

}  // namespace bench
