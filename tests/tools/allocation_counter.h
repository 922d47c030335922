#pragma once

#include <cstdint>

/// How often the calling thread has asked for memory so far. A program that links this has
/// another operator new; what C libraries take by malloc is not counted.
std::uint64_t allocationCount();
