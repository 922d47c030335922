#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/mapped_memory.h"
#include "scanner/vorda_process.h"

namespace ProcessScanner {

/// What is remembered of a process's mapped files.
struct MappedFilesRead {
  std::uint64_t at = 0;                     ///< on platform::processClock()
  double modelMB = 0;                       ///< of models' files together, in MiB
  std::vector<MappedMemory::File> largest;  ///< MappedMemory::files
};

/// Mapped or shared memory is told of from so many MiB on, if it is at least this part of the
/// footprint.
///@{
inline constexpr double kLeastMappedMB = 256;
inline constexpr double kLeastPartOfFootprint = 0.2;
///@}

/// How long what was read of mapped files counts, in nanoseconds.
inline constexpr std::uint64_t kMappedFilesStand = 60'000'000'000;

/// Sets `memory` to what the process that was looked at last has mapped and shares, where that is a
/// lot. Its files are read where they may be (`isOwn`), once and then once a minute; `known`
/// remembers them. Where nothing has changed it allocates nothing.
void sampleMapped(std::int32_t pid, double footprintMB, bool isOwn,
                  std::unique_ptr<MappedFilesRead>& known, std::optional<MappedMemory>& memory);

/// Whether a file with this path holds a model's weights.
bool isModelFile(std::string_view path);

}  // namespace ProcessScanner
