#pragma once

#include <string>
#include <vector>

/// What one process uses of memory that others may use, too, where that is a lot. Never part of
/// its footprint.
struct MappedMemory {
  struct File {
    std::string name;  ///< the last part of its path
    double memMB = 0;  ///< as much as is mapped, in MiB
    bool isModel = false;

    bool operator==(const File&) const = default;
  };

  double mappedMB = 0;  ///< pages of mapped files in memory, in MiB; 0: not worth a word
  double sharedMB = 0;  ///< shared memory, in MiB; 0: not worth a word
  /// Of mappedMB, as much as may be a model's; 0 where the largest file is none.
  double modelMB = 0;
  std::vector<File> files;  ///< the largest first, at most 3; empty where that isn't known

  bool operator==(const MappedMemory&) const = default;
};
