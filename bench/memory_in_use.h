#pragma once

#include <string>

namespace bench {

/// A process's memory in bytes.
struct MemoryInUse {
  double anonymous = 0;  ///< RssAnon + RssShmem: what it alone keeps busy
  double resident = 0;   ///< VmRSS: with the pages of its files
};

/// `pid`: a number, or "self". All zero when it can't be read.
MemoryInUse memoryInUse(const std::string& pid);

}  // namespace bench
