// The program in a terminal, with waits that its arguments say: what runTerminal() takes.
#include <clocale>
#include <cstdlib>

#include "app/branding.h"
#include "frontends/terminal/run_terminal.h"

int main(int argc, char** argv) {
  constexpr int kArguments = 4;
  if (argc != kArguments) return EXIT_FAILURE;
  std::setlocale(LC_CTYPE, "");
  const terminal::TerminalWaits waits{
      .hint = std::atof(argv[1]),
      .controller = {.refresh = std::atof(argv[2]), .quit = std::atof(argv[3])}};
  return runTerminal(Branding::aboutAlert(), waits);
}
