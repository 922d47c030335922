// What is pasted into the full-screen menu of the real program.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "end_to_end/terminal_session.h"
#include "fakes/row_name.h"
#include "tools/child_process.h"

namespace {

using std::chrono::milliseconds;

const std::string kBegin = "\033[200~";
const std::string kEnd = "\033[201~";

/// What somebody has in the clipboard, as a terminal sends it: among it the letters that move
/// the selection, and those that are keys.
const std::string kLines = "rake task\rquit job\rk\rkk\r? why\r";

/// One piece a key: whatever is sent at once.
std::vector<std::string> inSingleBytes(const std::string& bytes) {
  std::vector<std::string> pieces;
  for (const char byte : bytes) pieces.emplace_back(1, byte);
  return pieces;
}

struct PasteRow {
  const char* name;
  std::vector<std::string> pieces;
  milliseconds pause{0};  ///< between them
};

class Paste : public testing::Test {
 protected:
  Paste() : server_(playProcess({"--memory", "120"}, {"llama-server", "--model", model()})) {}

  static std::string name() { return "paste" + std::to_string(getpid()); }
  static std::string model() { return "/models/" + name() + ".gguf"; }

  void send(const PasteRow& row) {
    for (const std::string& piece : row.pieces) {
      terminal_.send(piece);
      std::this_thread::sleep_for(row.pause);
    }
    terminal_.settle();
  }
  /// It did not end the process, left no submenu or alert open, and the program goes on.
  void expectNothingChosen() {
    EXPECT_TRUE(server_.runs());
    EXPECT_EQ(terminal_.screen().find("Full details").x, -1) << terminal_.screen().picture();
    EXPECT_EQ(terminal_.screen().find("[ ").x, -1) << terminal_.screen().picture();
    EXPECT_NE(terminal_.screen().reversed().find(name()), std::string::npos)
        << terminal_.screen().picture();
  }

  ChildProcess server_;
  TerminalSession terminal_;
};

class BracketedPaste : public Paste, public testing::WithParamInterface<PasteRow> {};

TEST_P(BracketedPaste, ChoosesNothing) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  send(GetParam());
  expectNothingChosen();
  EXPECT_TRUE(terminal_.press("?", "This list")) << "it listens again";
}

INSTANTIATE_TEST_SUITE_P(
    Table, BracketedPaste,
    testing::Values(
        PasteRow{"AtOnce", {kBegin + kLines + kEnd}},
        PasteRow{"InSingleBytes", inSingleBytes(kBegin + kLines + kEnd), milliseconds(60)},
        PasteRow{"InLines", {kBegin + "a\r", "b\r", "c\r", kEnd}, milliseconds(400)},
        PasteRow{"WithAWordAsLongAsTheProgramsInput", {kBegin + std::string(3000, 'x') + kEnd}},
        PasteRow{"EndWithoutABegin", {kEnd}}, PasteRow{"EmptyPaste", {kBegin + kEnd}}),
    rowName<PasteRow>);

TEST_F(Paste, ThatIsChosenInASubmenuChoosesNothingThere) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  ASSERT_TRUE(terminal_.press("\r", "Full details"));
  ASSERT_TRUE(terminal_.walkTo("Force Quit (", true));
  terminal_.releaseKey();
  send({"", {kBegin + "\r", "\r", "\r" + kEnd}, milliseconds(400)});
  EXPECT_TRUE(server_.runs());
  EXPECT_EQ(terminal_.screen().find("This cannot be undone.").x, -1);
}

/// From a terminal that does not put it in brackets.
class PlainPaste : public Paste, public testing::WithParamInterface<PasteRow> {};

TEST_P(PlainPaste, EndsNothing) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  send(GetParam());
  EXPECT_TRUE(server_.runs());
  EXPECT_EQ(terminal_.screen().find("This cannot be undone.").x, -1);
  // It goes on, with whatever is open closed again.
  EXPECT_TRUE(terminal_.press("\033", [&] { return terminal_.screen().find("[ ").x < 0; }));
  EXPECT_TRUE(
      terminal_.press("\033", [&] { return terminal_.screen().find("Full details").x < 0; }));
  EXPECT_TRUE(terminal_.press("?", "This list"));
}

INSTANTIATE_TEST_SUITE_P(
    Table, PlainPaste,
    testing::Values(PasteRow{"AtOnce", {kLines}}, PasteRow{"InSingleBytes", inSingleBytes(kLines)},
                    PasteRow{"SlowlyInSingleBytes", inSingleBytes(kLines), milliseconds(60)},
                    PasteRow{"EntersAtOnce", {std::string(40, '\r')}},
                    PasteRow{"EntersInSingleBytes", inSingleBytes(std::string(40, '\r'))},
                    PasteRow{"EntersSlowly", inSingleBytes(std::string(40, '\r')),
                             milliseconds(60)}),
    rowName<PasteRow>);

TEST_F(Paste, WithoutAnEndIsOverAfterAWhile) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  terminal_.send(kBegin + kLines);
  terminal_.settle();
  expectNothingChosen();
  const auto isAnswered = [&] { return terminal_.screen().find("This list").x >= 0; };
  // A key that comes too soon is part of the paste, and begins its time anew.
  EXPECT_TRUE(terminal_.waitUntil([&] {
    for (int i = 0; i < 6 && !isAnswered(); ++i) terminal_.releaseKey();
    if (!isAnswered()) terminal_.send("?");
    terminal_.settle();
    return isAnswered();
  }));
}

TEST_F(Paste, WithoutAnEndDoesNotStopTheProgram) {
  TerminalSession terminal({.waits = terminal::TerminalWaits{.controller = {.refresh = 0.5}}});
  ASSERT_TRUE(terminal.waitFor("q Quit"));  // what is typed before may be lost
  ASSERT_TRUE(terminal.walkTo(name()));
  terminal.send(kBegin);
  const ChildProcess another(
      playProcess({"--memory", "120"}, {"llama-server", "--model", "/models/new" + name()}));
  const auto isListed = [&] { return terminal.screen().find("new" + name()).x >= 0; };
  const bool listed = terminal.waitUntil([&] {
    if (!isListed()) terminal.send("pasted\r");
    return isListed();
  });
  EXPECT_TRUE(listed) << "it refreshes meanwhile";
  EXPECT_TRUE(server_.runs());
  ASSERT_EQ(kill(terminal.pid(), SIGTERM), 0);
  terminal.send("pasted\r");
  EXPECT_EQ(terminal.waitForEnd(), 0);
}

}  // namespace
