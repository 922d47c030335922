#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "app/tray_program.h"
#include "platform/linux/own_program.h"
#include "text/display_line.h"

namespace {

constexpr const char* kName = "vorda-tray";

}  // namespace

std::string findTrayProgram() {
  return platform::findOwnProgram(kName);
}

void becomeTrayProgram(const std::string& path) {
  std::string argument = kName;
  const std::array<char*, 2> arguments{argument.data(), nullptr};
  execv(path.c_str(), arguments.data());
  const char* const reason = std::strerror(errno);
  std::fprintf(stderr, "vorda: can't start %s: %s\n", text::displayLine(path).c_str(), reason);
}
