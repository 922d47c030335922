#include "memory_in_use.h"

#include <fstream>

namespace bench {

MemoryInUse memoryInUse(const std::string& pid) {
  constexpr double kBytes = 1024;
  MemoryInUse memory;
  std::ifstream status("/proc/" + pid + "/status");
  for (std::string line; std::getline(status, line);) {
    const auto colon = line.find(':');
    const std::string key = line.substr(0, colon);
    if (key == "RssAnon" || key == "RssShmem") {
      memory.anonymous += std::stod(line.substr(colon + 1)) * kBytes;
    } else if (key == "VmRSS") {
      memory.resident = std::stod(line.substr(colon + 1)) * kBytes;
    }
  }
  return memory;
}

}  // namespace bench
