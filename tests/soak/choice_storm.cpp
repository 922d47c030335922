// In the middle of a storm one process is chosen, and that one ends.
#include <sys/wait.h>

#include <csignal>

#include "soak/crowd.h"
#include "soak/storm.h"
#include "tools/child_process.h"

namespace {

class Choice : public Storm {};

TEST_F(Choice, EndsTheChosenProcessAlone) {
  const Crowd crowd({{"living", 500}, {"births", 500}, {"titles", 4}});
  ChildProcess chosen(
      playProcess({"--memory", "64"}, {"llama-server", "--model", "/models/chosen-one.gguf"}));
  TerminalSession terminal({.height = 50});
  ASSERT_TRUE(terminal.waitFor("q Quit"));
  ASSERT_TRUE(terminal.walkTo("chosen one"));
  ASSERT_TRUE(terminal.press("\r", "Force Quit"));
  ASSERT_TRUE(terminal.walkTo("Force Quit", true));
  terminal.send("\033[A");
  ASSERT_TRUE(terminal.waitUntil(
      [&] { return terminal.screen().reversed().find("Force Quit") == std::string::npos; }));
  ASSERT_TRUE(terminal.press("\r", [&] { return terminal.screen().find("Force Quit").x < 0; }));
  const auto status = chosen.wait();
  ASSERT_TRUE(status);
  EXPECT_TRUE(WIFSIGNALED(*status) && WTERMSIG(*status) == SIGTERM);
  EXPECT_TRUE(answersKeys(terminal));
}

}  // namespace
