#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "launch_agents/launch_agent_operation.h"
#include "launch_agents/launch_agent_scanner.h"
#include "launch_agents/vorda_launch_agent.h"
#include "scanner/gpu_sample.h"
#include "scanner/repeated_scan.h"
#include "scanner/system_memory.h"
#include "scanner/vorda_process.h"
#include "ui/alerts.h"
#include "ui/content_digest.h"
#include "ui/family_rows.h"
#include "ui/front_end.h"
#include "ui/memory_warning_rule.h"
#include "ui/memory_warning_text.h"
#include "ui/menu.h"
#include "ui/menu_construction.h"
#include "ui/shown_pids.h"
#include "ui/unfinished_quits.h"
#include "ui/waiting_times.h"

/// The one object that owns the program's presence on screen: the menu, the refresh timer
/// and the last sample of processes and launch agents. It samples every 5 seconds; while
/// the menu is open only the strip and live titles change, so that no item moves under the pointer.
class StatusBarController : public MenuDelegate {
 public:
  static constexpr const char* kStatusTitle = "Vorda²";  ///< stands in the menu bar

  /// How long it waits, in seconds.
  struct Waits {
    double refresh = WaitingTimes::kRefreshInterval;  ///< from one refresh to the next
    double quit = WaitingTimes::kQuitPatience;        ///< before it says what a quit did not end
  };

  /// Takes the first sample, builds the menu and starts the timer. `frontEnd` outlives it;
  /// `about` is what the "About" item shows.
  StatusBarController(FrontEnd& frontEnd, Alert about, Waits waits);
  StatusBarController(FrontEnd& frontEnd, Alert about);
  ~StatusBarController() override;
  StatusBarController(const StatusBarController&) = delete;
  StatusBarController& operator=(const StatusBarController&) = delete;

  /// The menu as it is shown now: another one after each refresh. Never nullptr.
  const std::shared_ptr<const Menu>& rootMenu() const { return rootMenu_; }
  /// The last sample; of the launch agents, those of interest.
  ///@{
  const std::vector<VordaProcess>& processes() const { return processes_; }
  const std::vector<VordaLaunchAgent>& launchAgents() const {
    return launchAgentScan_.ofInterest();
  }
  const GpuSample& gpus() const { return gpus_; }
  /// Those of the sample; valid until the next one.
  ShownFamilies families() const { return {processes_, scan_.unlistedMembers(), gpus_.unlisted}; }
  ///@}
  /// Whether the front end has reported that its menu has opened, and not yet that it has closed.
  bool menuIsOpen() const { return menuIsOpen_; }

  void menuNeedsUpdate() override;
  void menuWillOpen() override;
  void menuDidClose() override;
  void submenuWillOpen(const MenuItem& row) override;
  void perform(std::shared_ptr<const MenuItem> item) override;
  void arrange(const MenuArrangement& arrangement) override;

 private:
  using Sender = const MenuItem&;

  /// Counts an action as running for its lifetime, alerts included.
  class [[nodiscard]] ActionUnderWay {
   public:
    explicit ActionUnderWay(int& count) : count_(count) { ++count_; }
    ~ActionUnderWay() { --count_; }
    ActionUnderWay(const ActionUnderWay&) = delete;
    ActionUnderWay& operator=(const ActionUnderWay&) = delete;

   private:
    int& count_;
  };

  /// A row in the open submenu of what ends a cut section.
  struct MoreRow {
    VordaProcess process;  ///< as it was when the row was made
    std::shared_ptr<LiveTitle> live;
  };

  // Refresh cycle.
  /// Takes a sample and shows it: in a new menu, or only in the strip while the menu is open.
  void refresh();
  /// The same, in an open menu too.
  void refreshNow();
  /// The same for timers: no new menu is built where it would say what the last one says. Allocates
  /// nothing when nothing has changed.
  void refreshIfChanged();
  /// Takes the sample, and shows it in tooltip and notice, not in the menu.
  void sample();
  MenuContent content() const;
  void updateStatusItem();
  void updateStrip();
  void showMoreRows(const MenuItem& more);
  void updateMoreRows();
  void updatePressure();
  /// Builds the menu from the last sample.
  void rebuildMenu();
  /// A function that calls refreshIfChanged(), or does nothing once the controller is destroyed.
  std::function<void()> weakRefresh();

  // Process actions.
  void quitProcess(Sender sender);
  void forceProcess(Sender sender);
  void confirmForceQuit(const Alert& question, const ProcessReference& process);
  void finishQuit(std::int32_t pid, const std::string& title, const std::string& failureTitle,
                  const std::pair<bool, std::string>& answer);
  void showDetails(Sender sender);
  std::vector<ProcessReference> ownMembersOf(const VordaProcess& process) const;
  void openDockerHelp();
  void notify(const std::string& title, const std::string& message);
  void removeFromListOptimistically(std::int32_t pid);
  void schedulePostQuitRescans();
  void startQuitClock(const ProcessReference& process);
  void updateNotice();

  // The watch over the memory.
  void watchMemory();
  void lookAtMemory(double now);
  void lookAgainInTime();

  // Family actions.
  /// Processes that are being ended together.
  struct FamilyEnding {
    std::string name = {};                       ///< of their work
    std::vector<ProcessReference> members = {};  ///< as they were named, the head first
    bool force = false;
    std::string reason = {};  ///< why one could not be told; "" when all could
    /// Members that began after they were named: they are told of, not ended.
    std::vector<ProcessReference> newcomers = {};
  };
  void endFamily(Sender sender, bool force);
  void killRestOfFamily(FamilyEnding& ending, std::int32_t head);
  void noteNewcomers(FamilyEnding& ending, std::int32_t head) const;
  static void tell(FamilyEnding& ending, const ProcessReference& process);
  void askRestOfFamily(FamilyEnding ending);
  void tellLater(FamilyEnding ending, double seconds);
  void tellFamilyOutcome(FamilyEnding ending);
  void afterFamily(double seconds, FamilyEnding ending,
                   void (StatusBarController::*next)(FamilyEnding));

  // Launch agent actions.
  void unloadLaunchAgent(Sender sender);
  void unloadByLabel(Sender sender);
  void confirmUnload(const VordaLaunchAgent& launchAgent);
  void loadLaunchAgent(Sender sender);
  void beginOperation(LaunchAgentOperation operation);
  void lookAfterOperations();
  void tellOutcome(const LaunchAgentOperation& operation);

  FrontEnd& frontEnd_;
  Alert about_;
  Waits waits_;
  std::shared_ptr<const Menu> rootMenu_;
  std::shared_ptr<ScheduledWork> refreshTimer_;
  LaunchAgentScanner::RepeatedScan launchAgentScan_;
  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
  GpuSample gpus_;
  SystemMemory::Snapshot sys_;
  ShownPids shownPids_;
  ContentDigest sampled_;               ///< of the last sample
  std::optional<ContentDigest> told_;   ///< what the tooltip was made of
  std::optional<ContentDigest> shown_;  ///< what the menu was built of
  /// Under way, or ended and not told yet.
  std::vector<LaunchAgentOperation> launchAgentOperations_;
  std::shared_ptr<ScheduledWork> launchAgentOperationTimer_;
  int actionsUnderWay_ = 0;
  MenuArrangement arrangement_;
  std::vector<std::shared_ptr<ScheduledWork>> postQuitWorkItems_;
  UnfinishedQuits unfinishedQuits_;
  MemoryWarningRule memoryWarningRule_;
  std::optional<MemoryWarning> memoryWarning_;  ///< the last, until it is over
  std::shared_ptr<ScheduledWork> memoryLook_;   ///< between two refreshes
  std::string notice_;                          ///< what the front end was last told
  bool menuIsOpen_ = false;
  std::vector<MoreRow> moreRows_;  ///< of the submenu that opened last
  std::vector<std::int32_t> morePids_;
  FairShareInquiry shownFamily_{frontEnd_};  ///< about the family whose submenu opened last
  /// Timers and delayed work hold a weak pointer to this, which expires with the controller.
  std::shared_ptr<StatusBarController*> self_;
};
