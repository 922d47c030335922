// What the menu's items do, on real processes and a real service.
#include <sys/wait.h>

#include <algorithm>

#include "frontends/qt/desktop/tray_test.h"
#include "tools/child_process.h"
#include "tools/user_manager_rig.h"

namespace {

class TrayActions : public TrayTest {
 protected:
  /// A model server large enough to have a row whatever else runs on this machine.
  static std::vector<std::string> modelServer(std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--memory", "300"});
    return playProcess(options, {"/usr/bin/ollama", "serve"});
  }

  /// How often "Down" has to be pressed in the menu that has just opened; 0: never there.
  int stepsDownTo(int pid) {
    const auto row = host->processRow(pid);
    int steps = 0;
    for (const HostItem& item : host->layout().children) {
      if (!item.enabled || item.label.empty()) continue;
      ++steps;
      if (row && item.id == row->id) return steps;
    }
    return 0;
  }
};

TEST_F(TrayActions, QuitEndsTheProcessAndItsRowGoes) {
  ChildProcess server(modelServer());
  const int pid = server.pid();
  startInTray();
  chooseOfProcess(pid, "Quit");
  const auto status = server.wait();
  ASSERT_TRUE(status);
  EXPECT_TRUE(WIFSIGNALED(*status));
  EXPECT_EQ(WTERMSIG(*status), SIGTERM);
  EXPECT_TRUE(rowGoes(pid));
}

TEST_F(TrayActions, NamesWithoutAnEndAreShortLabels) {
  std::string marks;
  for (int i = 0; i < 30'000; ++i) marks += "\u0301";
  const ChildProcess dear(playProcess({"--memory", "300"}, {"/opt/e" + marks, "vllm", "serve"}));
  startInTray();
  const auto row = host->processRow(dear.pid());
  ASSERT_TRUE(row);
  EXPECT_LT(row->label.size(), 128U);
  chooseOfProcess(dear.pid(), "Full details…");
  EXPECT_TRUE(windowAppears(kDialog));
}

TEST_F(TrayActions, ForceQuitAsksFirst) {
  ChildProcess server(modelServer({"--ignore-term"}));
  const int pid = server.pid();
  startInTray();

  // It refuses to quit: its row goes at once, and a quarter of a second later it has a new one.
  const auto row = host->processRow(pid);
  ASSERT_TRUE(row);
  chooseOfProcess(pid, "Quit");
  ASSERT_TRUE(host->eventually([&] {
    const auto now = host->processRow(pid);
    return now && now->id != row->id;
  }));
  const auto again = host->processRow(pid);
  ASSERT_TRUE(again);
  EXPECT_TRUE(std::any_of(again->children.begin(), again->children.end(), [](const auto& item) {
    return item.label.starts_with("Asked to quit ") && !item.enabled;
  }));

  chooseOfProcess(pid, "Force Quit");
  ASSERT_TRUE(windowAppears(kDialog));
  desktop.press({"Escape"});
  EXPECT_TRUE(windowGoes(kDialog));
  EXPECT_TRUE(server.runs());

  chooseOfProcess(pid, "Force Quit");
  ASSERT_TRUE(windowAppears(kDialog));
  desktop.press({"Return"});
  const auto status = server.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGKILL);
  EXPECT_TRUE(rowGoes(pid));
}

TEST_F(TrayActions, PopupIsWalkedByKeyboard) {
  startInTray();
  host->activate();
  ASSERT_TRUE(windowAppears(kMenu));
  // The last item but one that can be chosen.
  desktop.press({"Up", "Up", "Return"});
  EXPECT_TRUE(windowAppears(kDialog));
  EXPECT_TRUE(windowGoes(kMenu));
}

TEST_F(TrayActions, PopupQuitsAProcessByKeyboard) {
  ChildProcess server(modelServer());
  startInTray();
  host->activate();
  ASSERT_TRUE(windowAppears(kMenu));
  const int steps = stepsDownTo(server.pid());
  ASSERT_GT(steps, 0);
  desktop.press(std::vector<std::string>(static_cast<std::size_t>(steps), "Down"));
  desktop.press({"Right", "Return"});
  const auto status = server.wait();
  ASSERT_TRUE(status);
  EXPECT_EQ(WTERMSIG(*status), SIGTERM);
}

TEST_F(TrayActions, ClickDuringAnAlertChangesNothing) {
  ChildProcess server(modelServer());
  startInTray();
  choose("About Vorda");
  ASSERT_TRUE(windowAppears(kDialog));
  chooseOfProcess(server.pid(), "Quit");
  host->activate();
  desktop.press({"Return"});
  EXPECT_TRUE(windowGoes(kDialog));
  EXPECT_TRUE(server.runs());
  EXPECT_TRUE(host->processRow(server.pid()));
}

TEST_F(TrayActions, MenuThatAHostHasOpenKeepsItsRows) {
  ChildProcess server(modelServer());
  ChildProcess other(modelServer());
  const int pid = server.pid();
  startInTray();
  chooseOfProcess(other.pid(), "Quit");
  ASSERT_TRUE(other.wait());
  host->aboutToShow();
  server.end();
  // A quit is followed by samples after a quarter of a second, one and two and a half.
  constexpr double kASample = 1.2;  // seconds
  host->pumpFor(kASample);
  EXPECT_TRUE(host->processRow(pid));
  host->aboutToShow();
  EXPECT_FALSE(host->processRow(pid));
}

TEST_F(TrayActions, MenuGoesWithItsHost) {
  ChildProcess server(modelServer());
  const int pid = server.pid();
  startInTray();
  host->aboutToShow();
  host->menuClosed();  // a host that says so
  host->aboutToShow();
  host->disappear();
  server.end();
  host->appear();
  ASSERT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  EXPECT_TRUE(rowGoes(pid));
}

/// The desktop's bus is that of a real user manager.
class TrayLaunchAgents : public TrayActions {
 protected:
  void SetUp() override {
    if (!rig.reason().empty()) GTEST_SKIP() << rig.reason();
    desktop.setBusAddress(std::getenv("DBUS_SESSION_BUS_ADDRESS"));
    TrayTest::SetUp();
  }

  /// The launch agent's row; its label begins with the launch agent's.
  std::optional<HostItem> launchAgentRow(const std::string& label) {
    for (const HostItem& row : host->layout().children) {
      if (row.label.starts_with(label)) return row;
    }
    return std::nullopt;
  }

  UserManagerRig rig;
};

TEST_F(TrayLaunchAgents, UnloadStopsTheService) {
  rig.addService("model-gateway", execStart(playProcess({}, {"gateway"})) + "\nRestart=always");
  ASSERT_EQ(runProgram({"systemctl", "--user", "start", "model-gateway"}), 0);

  startInTray();
  const auto row = launchAgentRow("model-gateway");
  ASSERT_TRUE(row);
  EXPECT_NE(row->label.find("on · pid"), std::string::npos);
  ASSERT_EQ(row->children.size(), 1U);
  EXPECT_EQ(row->children[0].label, "Stop / unload");

  host->click(row->children[0]);
  ASSERT_TRUE(windowAppears(kDialog));
  desktop.press({"Return"});
  EXPECT_TRUE(host->eventually([this] {
    const auto now = launchAgentRow("model-gateway");
    return now && now->label.find("off") != std::string::npos;
  }));
  EXPECT_NE(runProgram({"systemctl", "--user", "is-active", "--quiet", "model-gateway"}), 0);

  host->click(launchAgentRow("model-gateway")->children[0]);
  EXPECT_TRUE(host->eventually([] {
    return runProgram({"systemctl", "--user", "is-active", "--quiet", "model-gateway"}) == 0;
  }));
}

}  // namespace
