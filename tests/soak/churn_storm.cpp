// Processes that come and go, and change their looks, while they are looked at.
#include "soak/crowd.h"
#include "soak/storm.h"

namespace {

class Churn : public Storm {};

TEST_F(Churn, OfFiveHundredASecondInTheMenu) {
  const Crowd crowd({{"births", 500}, {"living", 500}});
  LedProgram program;
  ride(program, crowd.steady());
}

TEST_F(Churn, OfFiveHundredASecondOnTheTerminal) {
  const Crowd crowd({{"births", 500}, {"living", 500}});
  TerminalSession terminal;
  ride(terminal);
}

TEST_F(Churn, OfTitles) {
  const Crowd crowd({{"titles", 8}});
  LedProgram program;
  ride(program, crowd.steady());
}

}  // namespace
