#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "launch_agents/launch_agent_scanner.h"
#include "memory_in_use.h"
#include "parts.h"
#include "scanner/repeated_scan.h"

namespace bench {

double sampledMemory() {
  const double before = memoryInUse("self").anonymous;
  // As the controller does.
  ProcessScanner::RepeatedScan scan;
  std::vector<VordaProcess> processes;
  for (int i = 0; i < 6; ++i) scan.scan(50, LaunchAgentScanner::scan(), processes);
  return memoryInUse("self").anonymous - before;
}

double sampledMemoryOfFreshProgram() {
  const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(
      popen(("'" + self + "' --sampled-memory").c_str(), "r"), pclose);
  double bytes = 0;
  return output && std::fscanf(output.get(), "%lf", &bytes) == 1 ? bytes : 0;
}

}  // namespace bench
