// Many processes, and many users.
#include <unistd.h>

#include "soak/crowd.h"
#include "soak/storm.h"

namespace {

class Population : public Storm {};

TEST_F(Population, OfFiveThousandInTheMenu) {
  const Crowd crowd({{"living", 5000}});
  LedProgram program;
  ride(program, crowd.steady());
}

TEST_F(Population, OfFiveThousandOnTheTerminal) {
  const Crowd crowd({{"living", 5000}});
  TerminalSession terminal;
  ride(terminal);
}

TEST_F(Population, OfTwoHundredUsers) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can start processes of other users";
  const Crowd crowd({{"users", 200}});
  LedProgram program;
  ride(program, crowd.steady());
}

}  // namespace
