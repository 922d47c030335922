#include "platform/memory.h"

#include <mach/mach.h>
#include <sys/sysctl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "platform/macos/used_memory.h"

namespace platform {
namespace {

double installedBytes() {
  int name[] = {CTL_HW, HW_MEMSIZE};
  std::uint64_t bytes = 0;
  std::size_t size = sizeof bytes;
  if (sysctl(name, std::size(name), &bytes, &size, nullptr, 0) != 0) return 0;
  return static_cast<double>(bytes);
}

std::optional<MemoryInUse> inUse() {
  // Later kernels return more than these headers declare, and later headers declare more.
  constexpr mach_msg_type_number_t kWords =
      std::max<mach_msg_type_number_t>(62, HOST_VM_INFO64_COUNT);
  integer_t words[kWords] = {};
  static const host_t host = mach_host_self();  // every call would take another Mach port right
  mach_msg_type_number_t count = kWords;
  if (host_statistics64(host, HOST_VM_INFO64, words, &count) != KERN_SUCCESS) return std::nullopt;

  vm_statistics64_data_t pages = {};
  std::memcpy(&pages, words, sizeof pages);
  return memoryInUse({.free = pages.free_count,
                      .speculative = pages.speculative_count,
                      .wired = pages.wire_count,
                      .purgeable = pages.purgeable_count,
                      .internal = pages.internal_page_count,
                      .compressor = pages.compressor_page_count},
                     static_cast<double>(vm_kernel_page_size));
}

}  // namespace

MemoryReading readMemory() {
  return {.totalBytes = installedBytes(), .inUse = inUse()};
}

}  // namespace platform
