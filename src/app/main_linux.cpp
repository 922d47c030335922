#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/branding.h"
#include "app/front_end_choice.h"
#include "app/tray_program.h"
#include "frontends/terminal/run_terminal.h"
#include "frontends/text/text_front_end.h"
#include "platform/linux/heap.h"
#include "platform/linux/procfs.h"

namespace {

constexpr int kNothingToShow = 1;
constexpr int kWrongUse = 2;

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

Surroundings lookAround() {
  return {.onTerminal = isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1,
          .overSsh = isSet("SSH_CONNECTION") || isSet("SSH_TTY"),
          .hasDisplay = isSet("WAYLAND_DISPLAY") || isSet("DISPLAY")};
}

/// Becomes the tray's program if the surroundings ask for it; returns only if they do not, or if
/// that fails.
void tryTray(const Surroundings& surroundings) {
  const std::string program = findTrayProgram();
  if (program.empty()) return;
  if (surroundings.onTerminal) std::puts("vorda: running in the system tray");
  std::fflush(stdout);
  becomeTrayProgram(program);
}

}  // namespace

int main(int argc, char**) {
  platform::keepHeapSmall();
  if (argc > 1) {
    std::fputs("vorda: takes no options; it looks where it is started (see vorda(1))\n", stderr);
    return kWrongUse;
  }
  if (const std::string problem = platform::problemOfProc(); !problem.empty()) {
    std::fprintf(stderr, "vorda: %s\n", problem.c_str());
    return kNothingToShow;
  }
  std::setlocale(LC_CTYPE, "");  // but not LC_NUMERIC: figures look the same in every locale
  const Surroundings surroundings = lookAround();
  if (chooseFrontEnd(surroundings) == FrontEndKind::tray) tryTray(surroundings);
  return surroundings.onTerminal ? terminal::runTerminal(Branding::aboutAlert()) : runText(stdout);
}
