#include "ui/status_bar_controller.h"

#include "platform/applications.h"
#include "platform/heap.h"
#include "scanner/system_memory.h"
#include "ui/menu_limits.h"
#include "ui/status_tool_tip.h"
#include "ui/strip_segments.h"

StatusBarController::StatusBarController(FrontEnd& frontEnd, Alert about)
    : StatusBarController(frontEnd, std::move(about), Waits{}) {}

StatusBarController::StatusBarController(FrontEnd& frontEnd, Alert about, Waits waits)
    : frontEnd_(frontEnd),
      about_(std::move(about)),
      waits_(waits),
      self_(std::make_shared<StatusBarController*>(this)) {
  frontEnd_.setTitle(kStatusTitle);
  frontEnd_.setToolTip(StatusToolTip::beforeSample());
  refresh();
  refreshTimer_ = frontEnd_.every(waits_.refresh, weakRefresh());
}

StatusBarController::~StatusBarController() = default;

void StatusBarController::menuNeedsUpdate() {
  refresh();
}

void StatusBarController::menuWillOpen() {
  menuIsOpen_ = true;
  if (memoryWarning_) frontEnd_.setWarning(std::nullopt);
}

void StatusBarController::menuDidClose() {
  menuIsOpen_ = false;
  moreRows_.clear();
  morePids_.clear();
  shownFamily_.forget();
  refresh();
}

void StatusBarController::submenuWillOpen(const MenuItem& row) {
  if (row.action == Action::showMore) return showMoreRows(row);
  for (const MenuItem& line : row.submenu) {
    if (!line.live || line.live->isKnown) continue;
    shownFamily_.ask(line.live->processes, [this, live = line.live](const auto& shares) {
      setFairShares(*live, shares);
      frontEnd_.titlesChanged();
    });
  }
}

/// `item` stays valid even if a new menu is built while its action runs.
void StatusBarController::perform(std::shared_ptr<const MenuItem> item) {
  const ActionUnderWay performing(actionsUnderWay_);
  const MenuItem& sender = *item;
  switch (sender.action) {
    case Action::none:
    case Action::openRow:
    case Action::openMenu:
    case Action::showMore:
      return;
    case Action::refreshNow:
      return refreshNow();
    case Action::openAM:
      return platform::openSystemMonitor();
    case Action::about:
      frontEnd_.runModal(about_);
      return;
    case Action::quitApp:
      return frontEnd_.terminate();
    case Action::quitProcess:
      return quitProcess(sender);
    case Action::forceProcess:
      return forceProcess(sender);
    case Action::showDetails:
      return showDetails(sender);
    case Action::quitFamily:
    case Action::forceFamily:
      return endFamily(sender, sender.action == Action::forceFamily);
    case Action::openDockerHelp:
      return openDockerHelp();
    case Action::unloadByLabel:
      return unloadByLabel(sender);
    case Action::unloadLaunchAgent:
      return unloadLaunchAgent(sender);
    case Action::loadLaunchAgent:
      return loadLaunchAgent(sender);
  }
}

void StatusBarController::arrange(const MenuArrangement& arrangement) {
  arrangement_ = arrangement;
  sys_ = SystemMemory::snapshot();
  rebuildMenu();
}

void StatusBarController::refresh() {
  sample();
  if (menuIsOpen_) {
    updateStrip();
    updateMoreRows();
  } else {
    rebuildMenu();
  }
}

void StatusBarController::refreshNow() {
  sample();
  rebuildMenu();
}

void StatusBarController::refreshIfChanged() {
  sample();
  if (menuIsOpen_) {
    updateStrip();
    updateMoreRows();
  } else if (sampled_ != shown_ || !unfinishedQuits_.isEmpty()) {
    rebuildMenu();
  } else {
    updatePressure();
  }
}

void StatusBarController::sample() {
  const std::vector<VordaLaunchAgent>& launchAgents = launchAgentScan_.scan();
  const std::vector<std::int32_t> holders = GpuSampling::holders(menuIsOpen_);
  scan_.scan(MenuLimits::kMinMemMB, launchAgents, processes_, holders);
  gpus_ = GpuSampling::take(
      processes_, MenuLimits::kMinMemMB, menuIsOpen_,
      shownPids_.of(processes_, scan_.unlistedMembers(), arrangement_, morePids_));
  sys_ = SystemMemory::snapshot();
  sampled_ = digestOf(content());
  if (sampled_ != told_) updateStatusItem();
  watchMemory();
  updateNotice();
}

MenuContent StatusBarController::content() const {
  return {
      processes_, launchAgents(),          sys_,         &unfinishedQuits_, launchAgentOperations_,
      &gpus_,     scan_.unlistedMembers(), &arrangement_};
}

void StatusBarController::updateStatusItem() {
  told_ = sampled_;
  frontEnd_.setToolTip(StatusToolTip::of(processes_, waits_.refresh, sys_));
}

void StatusBarController::updateStrip() {
  MemoryPressureView& strip = *rootMenu_->items.front().strip;
  const ProcessList top = largestOf(processes_, MenuLimits::kMaxStripSegments);
  // A track of cards that is new or gone is added or removed only when the menu is next built.
  const auto gpus = gpuTrack(gpus_, MenuLimits::kMaxStripSegments);
  const bool hasGpus = strip.gpu && gpus;
  if (hasGpus) strip.gpu = gpus;
  const bool isKnown = applyPressureStrip(strip, sys_, top);
  if (isKnown || hasGpus) frontEnd_.stripChanged(strip);
}

/// From now on the cards are asked about these rows' processes, too, as about all that are shown.
/// Not at once: the front end opens the menu first.
void StatusBarController::showMoreRows(const MenuItem& more) {
  moreRows_.clear();
  morePids_.clear();
  for (const MenuItem& row : more.submenu) {
    const VordaProcess* const process = processOf(row);
    if (process == nullptr || !row.live) continue;
    moreRows_.push_back({*process, row.live});
    morePids_.push_back(process->pid);
  }
  if (moreRows_.empty()) return;
  frontEnd_.after(0, [weakSelf = std::weak_ptr(self_)] {
    const auto self = weakSelf.lock();
    if (self && (*self)->menuIsOpen_) (*self)->refresh();
  });
}

void StatusBarController::updateMoreRows() {
  bool areOthers = false;
  for (MoreRow& row : moreRows_) {
    const auto now = std::ranges::find_if(processes_, [&row](const VordaProcess& process) {
      return process.pid == row.process.pid && process.identity == row.process.identity;
    });
    if (now == processes_.end()) continue;
    row.process.gpuMemory = now->gpuMemory;
    std::string title = MenuConstruction::processTitle(row.process);
    if (title == row.live->title) continue;
    row.live->title = std::move(title);
    areOthers = true;
  }
  if (areOthers) frontEnd_.titlesChanged();
}

/// For a sample in which nothing else that the strip shows has changed.
void StatusBarController::updatePressure() {
  MemoryPressureView& strip = *rootMenu_->items.front().strip;
  if (applyPressure(strip, sys_)) frontEnd_.stripChanged(strip);
}

void StatusBarController::rebuildMenu() {
  const MenuContent now = content();
  shown_ = digestOf(now);
  rootMenu_ = std::make_shared<const Menu>(MenuConstruction::build(now));
  frontEnd_.menuRebuilt(rootMenu_);
  platform::returnFreeMemory();  // the menu before went only when this one was complete
}

std::function<void()> StatusBarController::weakRefresh() {
  return [weakSelf = std::weak_ptr(self_)] {
    if (const auto self = weakSelf.lock()) (*self)->refreshIfChanged();
  };
}
