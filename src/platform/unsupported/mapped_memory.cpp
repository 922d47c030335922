#include "platform/mapped_memory.h"

namespace platform {

std::optional<SharedMemory> sharedMemory(std::int32_t) {
  return std::nullopt;
}

std::vector<MappedFile> mappedFiles(std::int32_t, std::size_t) {
  return {};
}

std::vector<std::optional<std::uint64_t>> fairShares(std::span<const std::int32_t> pids,
                                                     std::chrono::milliseconds) {
  return std::vector<std::optional<std::uint64_t>>(pids.size());
}

}  // namespace platform
