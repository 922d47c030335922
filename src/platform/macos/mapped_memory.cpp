#include "platform/mapped_memory.h"

namespace platform {

// The kernel tells a Mac's programs of none of this at a price that a refresh can pay.

std::optional<SharedMemory> sharedMemory(std::int32_t) {
  return std::nullopt;
}

std::vector<MappedFile> mappedFiles(std::int32_t, std::size_t) {
  return {};
}

std::shared_ptr<const FairShareQuestion> askFairShares(const std::vector<std::int32_t>&) {
  return nullptr;
}

}  // namespace platform
