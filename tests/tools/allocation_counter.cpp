#include "tools/allocation_counter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t count = 0;

void* countedOrNull(std::size_t size) {
  ++count;
  return std::malloc(size == 0 ? 1 : size);
}

void* counted(std::size_t size) {
  void* memory = countedOrNull(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) {
  return counted(size);
}
void* operator new[](std::size_t size) {
  return counted(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return countedOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return countedOrNull(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

std::uint64_t allocationCount() {
  return count;
}
