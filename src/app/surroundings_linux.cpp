#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "app/surroundings.h"

namespace {

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool isPipe(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

}  // namespace

Surroundings lookAround() {
  return {.onTerminal = isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1,
          .overSsh = isSet("SSH_CONNECTION") || isSet("SSH_TTY"),
          .intoPipe = isPipe(STDOUT_FILENO),
          .hasDisplay = isSet("WAYLAND_DISPLAY") || isSet("DISPLAY")};
}
