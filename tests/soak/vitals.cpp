#include "soak/vitals.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string procFolderOf(pid_t pid) {
  return "/proc/" + std::to_string(pid);
}

}  // namespace

long anonymousMemory(pid_t pid) {
  std::ifstream status(procFolderOf(pid) + "/status");
  long memory = 0;
  for (std::string word; status >> word;) {
    if (word == "RssAnon:") status >> memory;
  }
  return memory;
}

std::size_t openFiles(pid_t pid) {
  std::size_t count = 0;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(procFolderOf(pid) + "/fd", error)) {
    const auto target = std::filesystem::read_symlink(entry.path(), error).string();
    const bool isOfAProcess = target.ends_with("/cmdline") || target.ends_with("/statm");
    if (!target.starts_with("/proc/") || !isOfAProcess) ++count;
  }
  return count;
}

double secondsWithoutCpu(pid_t pid) {
  double running = 0;
  double waiting = 0;
  std::ifstream(procFolderOf(pid) + "/schedstat") >> running >> waiting;
  return waiting / 1e9;
}
