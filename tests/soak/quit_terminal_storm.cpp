// "Quit" in the terminal, as somebody chooses it who reads the screen, while pids are given anew.
#include <chrono>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include "end_to_end/terminal_session.h"
#include "fakes/row_name.h"
#include "soak/quit_storm.h"

namespace {

using Clock = std::chrono::steady_clock;

class TerminalMenu : public QuitMenu {
 public:
  explicit TerminalMenu(CallGate* gate)
      : terminal_(
            {.height = 50, .prepare = [gate] { return gate == nullptr || gate->prepare(); }}) {
    EXPECT_TRUE(gate == nullptr || gate->attach(terminal_.pid()));
    terminal_.waitFor("q Quit");
  }

  pid_t program() const override { return terminal_.pid(); }

  /// In the end one of both stands in the list: the one that has the pid.
  bool list(const PidRelay::Names& names) override {
    leaveSubmenu();
    const auto isListed = [&] { return shows(names.meant) || shows(names.successor); };
    const auto deadline = Clock::now() + kPatience;
    do {
      terminal_.send("r");
    } while (!waitBriefly(isListed) && Clock::now() < deadline);
    return selectRow(names.meant);
  }

  /// A key that chooses counts only when nothing has moved for a while.
  void rest() override {
    constexpr std::chrono::milliseconds kLongEnough{350};
    const auto end = Clock::now() + kLongEnough;
    terminal_.waitUntil([end] { return Clock::now() >= end; });
  }

  bool open(const PidRelay::Names& names, Way way) override {
    // With the list brought up to date its row may go, and another one be selected.
    pressEnterUntil([&] { return submenuIsOpen() || !rowIsSelected(names.meant); });
    terminal_.settle();
    if (submenuIsOpen() && rowIsSelected(names.meant) && select(way)) return true;
    leaveSubmenu();
    return false;
  }

  bool choose(Way /*way*/) override {
    pressEnterUntil([this] { return asks() || !submenuIsOpen(); });
    if (!asks()) awaitAnswer();
    return asks();
  }

  void answerYes() override {
    EXPECT_TRUE(yesIsSelected());
    pressEnterUntil([this] { return !asks(); });
    awaitAnswer();
  }

 private:
  static constexpr std::chrono::seconds kPatience{60};
  static constexpr const char* kEnter = "\r";
  static constexpr const char* kEscape = "\033";
  static constexpr const char* kHome = "\033[H";
  static constexpr const char* kUp = "\033[A";
  static constexpr const char* kDown = "\033[B";
  static constexpr const char* kRight = "\033[C";
  static constexpr const char* kLeft = "\033[D";

  bool shows(const std::string& text) const { return terminal_.screen().find(text).x >= 0; }
  bool isReversed(const std::string& text) const {
    return terminal_.screen().reversed().find(text) != std::string::npos;
  }
  bool submenuIsOpen() const { return shows("Force Quit ("); }
  bool asks() const { return shows("[ Force Quit ]"); }
  bool yesIsSelected() const { return isReversed("[ Force Quit ]"); }
  /// In the list; a submenu stands beside it.
  bool rowIsSelected(const std::string& name) const { return isReversed(name); }
  /// In the submenu: "Quit" and nothing behind it, or "Force Quit" with the memory.
  bool isSelected(Way way) const {
    std::istringstream lines(terminal_.screen().reversed());
    for (std::string line; std::getline(lines, line);) {
      line.erase(line.find_last_not_of(' ') + 1);
      if (way == Way::quit ? line.ends_with(" Quit") : line.find("Force Quit (") != line.npos) {
        return true;
      }
    }
    return false;
  }

  /// Another key is answered when all is done that the ones before it came to; not in front of
  /// the question.
  void awaitAnswer() {
    const auto isAnswered = [this] { return shows("[ OK ]") || asks(); };
    const auto deadline = Clock::now() + kPatience;
    do {
      terminal_.send("?");  // the answer takes no further one
    } while (!waitBriefly(isAnswered) && Clock::now() < deadline);
    EXPECT_TRUE(isAnswered()) << terminal_.screen().picture();
    if (asks()) return;
    terminal_.send(kEscape);
    terminal_.waitUntilGone("[ OK ]");
  }

  /// It does not count when something has moved just before, and is pressed again then: not
  /// before the program has read it.
  template <typename IsSo>
  void pressEnterUntil(IsSo isSo) {
    const auto deadline = Clock::now() + kPatience;
    while (!isSo() && Clock::now() < deadline) {
      terminal_.send(kEnter);
      if (waitBriefly(isSo)) return;
      if (asks()) {
        // It takes no key but those of its own.
        terminal_.send(kRight);
        terminal_.waitUntil([&] { return isSo() || !yesIsSelected(); });
        terminal_.send(kLeft);
        terminal_.waitUntil([&] { return isSo() || yesIsSelected(); });
      } else {
        awaitAnswer();
      }
      rest();
    }
  }

  /// Presses a key until it is so, or has no effect any more.
  template <typename IsSo>
  bool press(const char* key, IsSo isSo) {
    // Figures change beside it, with every refresh on a busy machine.
    const auto look = [this] {
      return std::pair(terminal_.screen().reversedRows(), terminal_.screen().reversed());
    };
    while (!isSo()) {
      const auto before = look();
      terminal_.send(key);
      if (!waitBriefly([&] { return look() != before; })) awaitAnswer();
      terminal_.settle();
      if (look() == before) break;
    }
    return isSo();
  }
  bool selectRow(const std::string& name) {
    terminal_.send(kHome);
    terminal_.settle();
    return press(kDown, [&] { return rowIsSelected(name); });
  }
  /// It opens with the selection on any item.
  bool select(Way way) {
    const auto isIt = [&] { return isSelected(way); };
    return press(kUp, isIt) || press(kDown, isIt);
  }
  void leaveSubmenu() {
    if (!submenuIsOpen()) return;
    terminal_.send(kEscape);
    terminal_.waitUntilGone("Force Quit (");
  }

  bool waitBriefly(const std::function<bool()>& isSo) {
    constexpr std::chrono::milliseconds kBriefly{500};
    const auto end = Clock::now() + kBriefly;
    terminal_.waitUntil([&] { return isSo() || Clock::now() >= end; });
    return isSo();
  }

  TerminalSession terminal_;
};

std::unique_ptr<QuitMenu> openTerminal(CallGate* gate) {
  return std::make_unique<TerminalMenu>(gate);
}

/// They wait nearly all of the time.
constexpr int kTerminals = 16;

class TerminalQuits : public QuitStorm {};

class TerminalQuitsOnAKernelWith : public TerminalQuits,
                                   public testing::WithParamInterface<IdentityKernel> {};

TEST_P(TerminalQuitsOnAKernelWith, EndTheProcessThatIsMeantOrNone) {
  quitAtEachPlace(GetParam(), openTerminal, kTerminals, false);
}

INSTANTIATE_TEST_SUITE_P(Table, TerminalQuitsOnAKernelWith, testing::ValuesIn(kIdentityKernels),
                         rowName<IdentityKernel>);

TEST_F(TerminalQuits, EndTheProcessThatIsMeantOrNoneAtAnyTime) {
  quitAtAnyTime(openTerminal, kTerminals);
}

}  // namespace
