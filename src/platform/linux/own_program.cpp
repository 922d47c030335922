#include "platform/linux/own_program.h"

#include <unistd.h>

#include <filesystem>

namespace platform {

std::string findOwnProgram(const std::string& name) {
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const auto folder = self.parent_path();
  for (const auto& candidate : {folder / name, folder.parent_path() / "libexec" / "vorda" / name}) {
    if (access(candidate.c_str(), X_OK) == 0) return candidate.string();
  }
  return {};
}

}  // namespace platform
