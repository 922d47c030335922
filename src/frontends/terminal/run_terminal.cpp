#include "frontends/terminal/run_terminal.h"

#include <cstdio>
#include <string>
#include <utility>

#include "frontends/terminal/curses_screen.h"

namespace terminal {

int runTerminal(Alert about, const TerminalWaits& waits) {
  std::string error;
  const auto screen = CursesScreen::open(error);
  if (!screen) {
    std::fprintf(stderr, "vorda: %s\n", error.c_str());
    return 1;
  }
  TerminalFrontEnd frontEnd(*screen, waits.hint, waits.input);
  frontEnd.showFrame();
  StatusBarController controller(frontEnd, std::move(about), waits.controller);
  frontEnd.run(controller);
  return 0;
}

}  // namespace terminal
