// The keys that find their way about in a long list, as a terminal sends them.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "end_to_end/terminal_session.h"
#include "fakes/row_name.h"
#include "tools/child_process.h"

namespace {

const std::string kF1 = "\033OP";
const std::string kF3 = "\033OR";
const std::string kF4 = "\033OS";
const std::string kF9 = "\033[20~";
const std::string kF10 = "\033[21~";
const std::string kControlD = "\004";
const std::string kControlU = "\025";
const std::string kHomeKey = "\033[H";
const std::string kEndKey = "\033[F";

/// Two model servers of the test's own, whose models end in "a" and "b".
class TerminalKeys : public testing::Test {
 protected:
  bool selects(const std::string& text) const {
    return terminal.screen().reversed().find(text) != std::string::npos;
  }
  /// Presses the key until what is selected holds that.
  bool pressTo(const std::string& key, const std::string& text) {
    const bool selected = terminal.press(key, [&] { return selects(text); });
    EXPECT_TRUE(selected) << terminal.screen().picture();
    return selected;
  }

  std::string serverOf(const char* ending) const { return "/models/" + name + ending; }

  const std::string name = "keys" + std::to_string(getpid());
  // They run before the terminal looks for the first time.
  const ChildProcess serverA{
      playProcess({"--memory", "2"}, {"llama-server", "--model", serverOf("a")})};
  const ChildProcess serverB{
      playProcess({"--memory", "2"}, {"llama-server", "--model", serverOf("b")})};
  TerminalSession terminal{{.width = 100, .height = 18}};
};

TEST_F(TerminalKeys, F1ListsThem) {
  ASSERT_TRUE(terminal.press(kF1, "Find; next, previous"));
}

TEST_F(TerminalKeys, F3FindsAndNGoesOn) {
  ASSERT_TRUE(terminal.filter(name));  // others may have filled the section
  ASSERT_TRUE(pressTo(kEndKey, name + "b"));
  ASSERT_TRUE(terminal.press(kF3, "Find: _"));
  terminal.send(name + "a");
  ASSERT_TRUE(terminal.waitFor("Find: " + name + "a_"));
  ASSERT_TRUE(terminal.press(kEnter, [this] { return terminal.screen().find("Find:").x < 0; }));
  ASSERT_TRUE(terminal.waitUntil([this] { return selects(name + "a"); }))
      << terminal.screen().picture();
  ASSERT_TRUE(terminal.press(kF3, "Find: _"));
  terminal.send(name);
  ASSERT_TRUE(terminal.waitFor("Find: " + name + "_"));
  ASSERT_TRUE(terminal.press(kEnter, [this] { return terminal.screen().find("Find:").x < 0; }));
  ASSERT_TRUE(pressTo("n", name + "b"));
  ASSERT_TRUE(pressTo("N", name + "a"));
}

TEST_F(TerminalKeys, F4FiltersWhileOneTypes) {
  ASSERT_TRUE(terminal.press(kF4, "Filter: _"));
  terminal.send(name + "b");
  ASSERT_TRUE(terminal.waitFor("Filter: " + name + "b_"));
  EXPECT_TRUE(terminal.waitUntil([this] { return selects(name + "b"); }))
      << terminal.screen().picture();
  EXPECT_EQ(terminal.screen().find(name + "a").x, -1);
  ASSERT_TRUE(terminal.press(kEscape, [this] { return terminal.screen().find("Filter:").x < 0; }));
}

TEST_F(TerminalKeys, F9OpensARow) {
  ASSERT_TRUE(terminal.filter(name + "a"));
  ASSERT_TRUE(terminal.press(kF9, "Full details…"));
}

TEST_F(TerminalKeys, F10Leaves) {
  ASSERT_TRUE(terminal.waitFor("Vorda²"));
  terminal.releaseKey();
  terminal.send(kF10);
  const auto status = terminal.waitForEnd();
  ASSERT_TRUE(status);
  EXPECT_TRUE(WIFEXITED(*status) && WEXITSTATUS(*status) == 0);
}

TEST_F(TerminalKeys, SSorts) {
  ASSERT_TRUE(terminal.press("s", "Sorted by "));
}

/// A key that goes to the list's end, or down until it is there, and one that goes back.
struct EndsRow {
  const char* name;
  std::string down;
  std::string up;
};

class TerminalEnds : public TerminalKeys, public testing::WithParamInterface<EndsRow> {};

TEST_P(TerminalEnds, AreReached) {
  ASSERT_TRUE(terminal.waitFor("Vorda²"));
  for (int pages = 0; pages < 100 && !selects("Quit Vorda"); ++pages) {
    const std::string before = terminal.screen().reversed();
    ASSERT_TRUE(
        terminal.press(GetParam().down, [&] { return terminal.screen().reversed() != before; }));
  }
  ASSERT_TRUE(selects("Quit Vorda"));
  for (int pages = 0; pages < 100 && terminal.screen().find("System  ").x < 0; ++pages) {
    const std::string before = terminal.screen().picture() + terminal.screen().reversed();
    ASSERT_TRUE(terminal.press(GetParam().up, [&] {
      return terminal.screen().picture() + terminal.screen().reversed() != before;
    }));
  }
  EXPECT_GE(terminal.screen().find("System  ").x, 0) << terminal.screen().picture();
}

INSTANTIATE_TEST_SUITE_P(Table, TerminalEnds,
                         testing::Values(EndsRow{"ControlDAndU", kControlD, kControlU},
                                         EndsRow{"EndAndHome", kEndKey, kHomeKey},
                                         EndsRow{"Letters", "G", "g"}),
                         rowName<EndsRow>);

}  // namespace
