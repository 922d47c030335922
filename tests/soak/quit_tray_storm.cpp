// "Quit" in the tray's menu, as a tray host chooses it over D-Bus, while pids are given anew.
#include <unistd.h>

#include <algorithm>
#include <string>
#include <thread>
#include <utility>

#include "fakes/row_name.h"
#include "frontends/qt/desktop/desktop.h"
#include "frontends/qt/desktop/tray_host.h"
#include "soak/quit_storm.h"
#include "tools/eventually.h"

namespace {

class TrayMenu : public QuitMenu {
 public:
  explicit TrayMenu(CallGate* gate) {
    host_.emplace(desktop_.busAddress());
    host_->appear();
    if (gate == nullptr) {
      program_ = desktop_.startProgram();
    } else {
      // What a thread starts has the gate that the thread has.
      std::thread starter([&] {
        if (gate->prepare()) program_ = desktop_.startProgram();
      });
      EXPECT_TRUE(gate->attach(getpid()));
      starter.join();
    }
    EXPECT_TRUE(host_->eventually([this] { return !host_->icon().empty(); }));
  }

  pid_t program() const override { return program_->pid(); }

  bool list(const PidRelay::Names& names) override {
    row_.reset();
    EXPECT_TRUE(becomesSo([&] { return lookAt(names); }));
    return row_.has_value();
  }

  /// A row that has gone stays on the screen of a host that has not heard of it.
  bool open(const PidRelay::Names& names, Way /*way*/) override {
    lookAt(names);
    return row_.has_value();
  }

  bool choose(Way way) override {
    const std::string label = way == Way::quit ? "Quit" : "Force Quit";
    for (const HostItem& item : row_->children) {
      if (item.label.starts_with(label)) chosen_ = item;
    }
    host_->click(chosen_);
    EXPECT_TRUE(becomesSo([&] { return !isListed() || (way == Way::forceQuit && asks()); }));
    letItComeRound();
    return way == Way::forceQuit && asks();
  }

  void answerYes() override {
    desktop_.press({"Return"});
    EXPECT_TRUE(becomesSo([this] { return !isListed(); }));
    letItComeRound();
  }

 private:
  static bool holds(const HostItem& item, int id) {
    return item.id == id || std::any_of(item.children.begin(), item.children.end(),
                                        [id](const HostItem& child) { return holds(child, id); });
  }

  /// Whether that pid has a row, somebody's.
  bool lookAt(const PidRelay::Names& names) {
    host_->menuClosed();  // or it would be the same opening, told again
    host_->aboutToShow();
    const auto row = host_->processRow(names.pid);
    if (row && row->label.find(names.meant) != std::string::npos) row_ = row;
    return row.has_value();
  }

  /// Whatever a click comes to, its row goes: it does not come back under the same number.
  bool isListed() { return holds(host_->layout(), chosen_.id); }

  /// A row may go because the menu closes, before what was chosen is done: that is the next thing
  /// that the program does when nothing is asked of it.
  void letItComeRound() {
    constexpr int kOften = 3;
    for (int i = 0; i < kOften; ++i) host_->layout();
  }

  bool asks() const { return desktop_.showsWindow("Vorda"); }

  /// Without a pause: what is asked takes the program a while.
  template <typename IsSo>
  static bool becomesSo(IsSo isSo) {
    return eventually(isSo, [] {});
  }

  Desktop desktop_;
  std::optional<TrayHost> host_;
  std::unique_ptr<BackgroundProgram> program_;
  std::optional<HostItem> row_;  ///< the one that was seen last
  HostItem chosen_;              ///< of its items
};

std::unique_ptr<QuitMenu> openTray(CallGate* gate) {
  return std::make_unique<TrayMenu>(gate);
}

class TrayQuits : public QuitStorm {
 protected:
  void SetUp() override {
    QuitStorm::SetUp();
    if (IsSkipped()) return;
    const std::string reason = Desktop().reason();
    if (!reason.empty()) GTEST_SKIP() << reason;
  }
};

class TrayQuitsOnAKernelWith : public TrayQuits,
                               public testing::WithParamInterface<IdentityKernel> {};

TEST_P(TrayQuitsOnAKernelWith, EndTheProcessThatIsMeantOrNone) {
  quitAtEachPlace(GetParam(), openTray, 1, true);
}

INSTANTIATE_TEST_SUITE_P(Table, TrayQuitsOnAKernelWith, testing::ValuesIn(kIdentityKernels),
                         rowName<IdentityKernel>);

TEST_F(TrayQuits, EndTheProcessThatIsMeantOrNoneAtAnyTime) {
  quitAtAnyTime(openTray, 1);
}

}  // namespace
