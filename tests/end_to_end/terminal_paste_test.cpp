// What is pasted into the full-screen menu of the real program.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "end_to_end/terminal_session.h"
#include "fakes/row_name.h"
#include "tools/child_process.h"

namespace {

using std::chrono::milliseconds;
using terminal::InputLimits;

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
  milliseconds pause{0};                   ///< between them
  std::optional<InputLimits> limits = {};  ///< in place of the program's own
};

/// Pauses after which the next byte is a key of its own, and after which it may choose something,
/// unless it is pasted, with limits of a tenth; the program's own ask for 60 and 400 ms. Of letters
/// the limit stays: on a busy machine a tenth of it may pass between any two bytes.
///@{
constexpr milliseconds kKeyByKey{6};
constexpr milliseconds kLineByLine{40};
const InputLimits kTenth{.betweenKeys = 0.005, .still = 0.03, .slowestRepeat = 0.012};
const InputLimits kTenthBetweenKeys{.betweenKeys = 0.005};
///@}

class Paste : public testing::Test {
 protected:
  explicit Paste(const std::optional<InputLimits>& limits = {})
      : server_(playProcess({"--memory", "120"}, {"llama-server", "--model", model()})),
        terminal_(optionsFor(limits)) {}

  static std::string name() { return "paste" + std::to_string(getpid()); }
  static std::string model() { return "/models/" + name() + ".gguf"; }

  void send(const PasteRow& row) {
    constexpr milliseconds kAloneAfter{60};  // the bytes of one key come sooner
    for (const std::string& piece : row.pieces) {
      terminal_.send(piece);
      const bool isAlone = piece == kEscape && row.pause > milliseconds(0);
      std::this_thread::sleep_for(isAlone ? kAloneAfter : row.pause);
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

 private:
  static TerminalSession::Options optionsFor(const std::optional<InputLimits>& limits) {
    if (!limits) return {};
    return {.waits = terminal::TerminalWaits{.input = *limits}};
  }
};

class BracketedPaste : public Paste, public testing::WithParamInterface<PasteRow> {
 protected:
  BracketedPaste() : Paste(GetParam().limits) {}
};

TEST_P(BracketedPaste, ChoosesNothing) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  send(GetParam());
  expectNothingChosen();
  EXPECT_TRUE(terminal_.press("?", "This list")) << "it listens again";
}

INSTANTIATE_TEST_SUITE_P(
    Table, BracketedPaste,
    testing::Values(PasteRow{"AtOnce", {kBegin + kLines + kEnd}},
                    PasteRow{"InSingleBytes", inSingleBytes(kBegin + kLines + kEnd), kKeyByKey,
                             kTenthBetweenKeys},
                    PasteRow{"InLines", {kBegin + "a\r", "b\r", "c\r", kEnd}, kLineByLine, kTenth},
                    PasteRow{"WithAWordAsLongAsTheProgramsInput",
                             {kBegin + std::string(3000, 'x') + kEnd}},
                    PasteRow{"EndWithoutABegin", {kEnd}}, PasteRow{"EmptyPaste", {kBegin + kEnd}}),
    rowName<PasteRow>);

class QuickPaste : public Paste {
 protected:
  QuickPaste() : Paste(kTenth) {}
};

TEST_F(QuickPaste, ThatIsChosenInASubmenuChoosesNothingThere) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  ASSERT_TRUE(terminal_.press("\r", "Full details"));
  ASSERT_TRUE(terminal_.walkTo("Force Quit (", true));
  terminal_.releaseKey();
  send({"", {kBegin + "\r", "\r", "\r" + kEnd}, kLineByLine});
  EXPECT_TRUE(server_.runs());
  EXPECT_EQ(terminal_.screen().find("This cannot be undone.").x, -1);
}

/// From a terminal that does not put it in brackets.
class PlainPaste : public Paste, public testing::WithParamInterface<PasteRow> {
 protected:
  PlainPaste() : Paste(GetParam().limits) {}
};

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
    testing::Values(
        PasteRow{"AtOnce", {kLines}}, PasteRow{"InSingleBytes", inSingleBytes(kLines)},
        PasteRow{"SlowlyInSingleBytes", inSingleBytes(kLines), kKeyByKey, kTenthBetweenKeys},
        PasteRow{"EntersAtOnce", {std::string(40, '\r')}},
        PasteRow{"EntersInSingleBytes", inSingleBytes(std::string(40, '\r'))},
        PasteRow{"EntersSlowly", inSingleBytes(std::string(40, '\r')), kKeyByKey, kTenth}),
    rowName<PasteRow>);

class QuicklyLostPaste : public Paste {
 protected:
  /// Less than a key takes to be released.
  QuicklyLostPaste() : Paste(InputLimits{.pastePatience = 0.3}) {}
};

TEST_F(QuicklyLostPaste, WithoutAnEndIsOverAfterAWhile) {
  ASSERT_TRUE(terminal_.walkTo(name()));
  terminal_.releaseKey();
  terminal_.send(kBegin + kLines);
  terminal_.settle();
  expectNothingChosen();
  EXPECT_TRUE(terminal_.press("?", "This list"));
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
