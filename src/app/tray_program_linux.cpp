#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "app/tray_program.h"
#include "text/display_line.h"

namespace {

constexpr const char* kName = "vorda-tray";

}  // namespace

std::string findTrayProgram() {
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const auto folder = self.parent_path();
  for (const auto& candidate :
       {folder / kName, folder.parent_path() / "libexec" / "vorda" / kName}) {
    if (access(candidate.c_str(), X_OK) == 0) return candidate.string();
  }
  return {};
}

void becomeTrayProgram(const std::string& path) {
  std::string argument = kName;
  const std::array<char*, 2> arguments{argument.data(), nullptr};
  execv(path.c_str(), arguments.data());
  const char* const reason = std::strerror(errno);
  std::fprintf(stderr, "vorda: can't start %s: %s\n", text::displayLine(path).c_str(), reason);
}
