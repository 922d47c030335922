#include "frontends/terminal/terminal_front_end.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "frontends/terminal/footer.h"
#include "frontends/terminal/keys_help.h"
#include "frontends/terminal/menu_painter.h"
#include "ui/process_whereabouts.h"
#include "ui/row_order.h"

namespace terminal {
namespace {

bool isFromUser(const Input& input) {
  return input.kind != Input::Kind::redraw && input.kind != Input::Kind::ended;
}

const char* saysSortedBy(SortBy sortBy) {
  switch (sortBy) {
    case SortBy::gpu:
      return "Sorted by GPU memory.";
    case SortBy::name:
      return "Sorted by name.";
    case SortBy::start:
      return "Sorted by start, the latest first.";
    case SortBy::memory:
      break;
  }
  return "Sorted by memory.";
}

}  // namespace

void TerminalFrontEnd::run(MenuDelegate& delegate) {
  delegate_ = &delegate;
  while (!ended_) handle(nextInput());
  delegate_ = nullptr;
}

/// Shows the present state, waits for what happens next, and does the work that is due. Work that
/// changes rows never runs between the last drawing and the user's answer to it.
Input TerminalFrontEnd::nextInput() {
  work_.run(screen_.now());
  if (needsDrawing_ && !ended_) draw();
  if (ended_) return {.kind = Input::Kind::ended};
  std::optional<double> wait = work_.nextDue();
  if (wait) wait = std::max(*wait - screen_.now(), 0.0);
  const Input pressed = screen_.nextInput(wait);
  const Input input = withoutShortcut(pressed);
  if (input.kind == Input::Kind::ended) ended_ = true;
  if (input.kind == Input::Kind::nothing) return input;
  if (isFromUser(input) && !counts(input)) return {};
  // Else the letter that it stands for would be one of the words.
  if (pressed.kind == Input::Kind::function && alert_ == nullptr) view_.endTyping();
  needsDrawing_ = true;
  return clickedKey(input);
}

/// For a click on one of the keys in the last line that key, else what came.
Input TerminalFrontEnd::clickedKey(const Input& input) const {
  if (input.kind != Input::Kind::click || alert_ != nullptr || isTooSmall(screen_.size())) {
    return input;
  }
  const MenuGeometry places = geometry();
  if (places.submenu && places.submenu->contains(input.x, input.y)) return input;
  for (const FooterKey& key : footerKeys(view_, places.keys, screen_.look().glyphs)) {
    if (key.place.contains(input.x, input.y)) return key.key;
  }
  return input;
}

/// Whether the input may take effect. Shows a hint when it may not and the user may wonder why.
bool TerminalFrontEnd::counts(const Input& input) {
  using Verdict = InputGuard::Verdict;
  const Verdict verdict = guard_.judge(input, screen_.now());
  if (view_.isTyping() && alert_ == nullptr && input.kind != Input::Kind::click) {
    // Words choose nothing. The line ends of a paste are left out.
    return verdict != Verdict::pasted || input.kind == Input::Kind::character;
  }
  if (verdict == Verdict::pasted) {
    hint("What is pasted does nothing here.");
    return false;
  }
  if (verdict == Verdict::tooSoon) hint("That came too soon. Press it again.");
  if (verdict == Verdict::counts) hint("");
  return verdict == Verdict::counts;
}

void TerminalFrontEnd::hint(const std::string& text) {
  if (endOfHint_) endOfHint_->cancel();
  if (!text.empty()) endOfHint_ = after(hintSeconds_, [this] { hint(""); });
  if (text == view_.hint()) return;
  view_.setHint(text);
  needsDrawing_ = true;
}

MenuGeometry TerminalFrontEnd::geometry() const {
  return menuGeometry(screen_.size(), view_, screen_.look());
}

void TerminalFrontEnd::draw() {
  needsDrawing_ = false;
  lookAtSelection();
  const Size size = screen_.size();
  CellGrid grid(size);
  Targets targets{.size = size};
  if (isTooSmall(size)) {
    paintTooSmall(grid, view_, screen_.look());
  } else {
    if (size != drawnSize_) {
      view_.resized(geometry());
      layOut(alert_);
      drawnSize_ = size;
    }
    paintMenu(grid, view_, geometry(), title_, screen_.look());
    if (alert_ != nullptr) alert_->paint(grid);
    targets = targetsOf(size, view_, geometry(), alert_);
  }
  screen_.draw(grid);
  guard_.shown(std::move(targets), screen_.now());
}

void TerminalFrontEnd::layOut(AlertView* alert) const {
  const Size size = screen_.size();
  if (alert != nullptr && !isTooSmall(size)) alert->layOut(size);
}

void TerminalFrontEnd::handle(const Input& input) {
  if (input.kind == Input::Kind::nothing) return;
  const bool tooSmall = isTooSmall(screen_.size());
  const bool quits = input.kind == Input::Kind::character && input.character == U'q';
  if (tooSmall && !quits) return;  // the user could not see what a key does
  const bool wasTyping = view_.isTyping();
  const MenuRequest request = view_.handle(input, geometry());
  switch (request.kind) {
    case MenuRequest::Kind::nothing:
      if (input.kind == Input::Kind::enter && !wasTyping && view_.selectedRow() == nullptr) {
        hint("Nothing is selected. Press ↑ or ↓ first.");
      }
      break;
    case MenuRequest::Kind::openSubmenu:
      openSubmenu();
      break;
    case MenuRequest::Kind::closeSubmenu:
      reportClosed();
      break;
    case MenuRequest::Kind::perform:
      perform(request.item);
      break;
    case MenuRequest::Kind::refresh:
      perform(Action::refreshNow);
      if (view_.submenuIsOpen()) {
        view_.resized(geometry());  // keeps the selection in view
        reportSubmenu();
      } else {
        reportClosed();  // the refresh closed it: its process is gone
      }
      break;
    case MenuRequest::Kind::showKeys:
      runModal(keysAlert());
      break;
    case MenuRequest::Kind::copyCommand:
    case MenuRequest::Kind::showCommand: {
      const VordaProcess* const process =
          view_.selectedRow() == nullptr ? nullptr : processOf(*view_.selectedRow());
      const std::string command = process == nullptr ? "" : Alerts::wholeCommand(*process);
      hint(takeCommand(command, request.kind == MenuRequest::Kind::copyCommand)
               .value_or("There is no command here."));
      break;
    }
    case MenuRequest::Kind::showMore:
      showMore();
      break;
    case MenuRequest::Kind::showMatches:
    case MenuRequest::Kind::fold:
      arrange();
      break;
    case MenuRequest::Kind::sort:
      sortByNext();
      break;
    case MenuRequest::Kind::quit:
      perform(Action::quitApp);
      break;
  }
}

/// The hint to show afterwards; none where there is no command.
std::optional<std::string> TerminalFrontEnd::takeCommand(const std::string& command, bool copies) {
  if (command.empty()) return std::nullopt;
  if (copies) {
    screen_.copy(command);
    return "Copied, if the terminal lets it. C shows it plain.";
  }
  screen_.showPlain(screen_.look().glyphs.line(command));
  return "";
}

/// Asks for the working folder of the selected process once for each menu.
void TerminalFrontEnd::lookAtSelection() {
  const MenuItem* const row = view_.selectedRow();
  const VordaProcess* const process = row == nullptr ? nullptr : processOf(*row);
  const auto selected = process == nullptr
                            ? std::nullopt
                            : std::optional(ProcessReference{process->pid, process->identity});
  if (selected == lookedAt_) return;
  lookedAt_ = selected;
  view_.setFolder(process == nullptr ? "" : folderOfOwn(*process));
}

/// The selection goes to the first of the rows that were left out.
void TerminalFrontEnd::showMore() {
  const auto place = view_.cursor().selected();
  arrangement_.wholeSections.insert(view_.selectedKey()->section);
  delegate_->arrange(arrangement_);
  view_.selectNearest(*place, geometry().list.height);
}

/// While the user looks for rows, no section is cut and no family folded: each row can be found.
void TerminalFrontEnd::arrange() {
  const bool looksForSome = view_.isTyping() || !view_.filter().empty();
  arrangement_.isWhole = looksForSome;
  arrangement_.foldsFamilies = view_.isFolded() && !looksForSome;
  delegate_->arrange(arrangement_);
}

/// The selection stays in its place: what stood there may be far away now, or cut.
void TerminalFrontEnd::sortByNext() {
  const bool hasGpus = view_.strip() != nullptr && view_.strip()->gpu;
  arrangement_.sortBy = sortAfter(arrangement_.sortBy, hasGpus);
  hint(saysSortedBy(arrangement_.sortBy));
  const auto place = view_.cursor().selected();
  delegate_->arrange(arrangement_);
  if (place) view_.selectNearest(*place, geometry().list.height);
}

/// The menu is brought up to date first. That may move the selected row, so the submenu that
/// opens is the one of the row that the user chose, or none when it is gone.
void TerminalFrontEnd::openSubmenu() {
  const std::optional<ItemKey> chosen = view_.selectedKey();
  reportClosed();
  delegate_->menuNeedsUpdate();
  if (!chosen || !findItem(view_.rows(), *chosen)) return;
  reportOpened();
  view_.openSubmenu();
  view_.resized(geometry());
  reportSubmenu();
}

void TerminalFrontEnd::reportSubmenu() {
  if (view_.submenuIsOpen()) delegate_->submenuWillOpen(*view_.selectedRow());
}

/// As in any menu, the submenu closes before the action runs.
void TerminalFrontEnd::perform(std::shared_ptr<const MenuItem> item) {
  view_.closeSubmenu();
  reportClosed();
  draw();
  if (item->action == Action::openAM && screen_.runSystemMonitor()) {
    needsDrawing_ = true;
    return;
  }
  delegate_->perform(std::move(item));
}

/// For keys that do the same wherever the selection is.
void TerminalFrontEnd::perform(Action action) {
  delegate_->perform(std::make_shared<const MenuItem>(MenuItem{.action = action}));
}

void TerminalFrontEnd::reportOpened() {
  if (menuOpen_ || delegate_ == nullptr) return;
  menuOpen_ = true;
  delegate_->menuWillOpen();
}

void TerminalFrontEnd::reportClosed() {
  if (!menuOpen_ || delegate_ == nullptr) return;
  menuOpen_ = false;
  delegate_->menuDidClose();
}

void TerminalFrontEnd::setTitle(const std::string& title) {
  title_ = title;
}

void TerminalFrontEnd::setToolTip(const std::string&) {}  // the menu itself shows it

void TerminalFrontEnd::menuRebuilt(std::shared_ptr<const Menu> menu) {
  lookedAt_.reset();
  view_.rebuilt(std::move(menu), listHeight(screen_.size(), view_, screen_.look()));
  needsDrawing_ = true;
}

void TerminalFrontEnd::stripChanged(const MemoryPressureView&) {
  needsDrawing_ = true;
}

void TerminalFrontEnd::titlesChanged() {
  needsDrawing_ = true;
}

void TerminalFrontEnd::alertChanged(const Alert& alert) {
  if (alert_ == nullptr) return;
  alert_->setText(alert.informativeText);
  layOut(alert_);
  needsDrawing_ = true;
}

void TerminalFrontEnd::setNotice(const std::string& notice) {
  view_.setNotice(notice);
  drawnSize_ = {};  // makes draw() lay out anew: the list's height has changed
  needsDrawing_ = true;
}

/// What the warning says stands in the notice.
void TerminalFrontEnd::setWarning(const std::optional<MemoryWarning>& warning) {
  if (warning) screen_.ring();
}

void TerminalFrontEnd::cancelTracking() {
  if (!view_.submenuIsOpen()) return;
  view_.closeSubmenu();
  reportClosed();
}

int TerminalFrontEnd::runModal(const Alert& alert) {
  const bool opens = !menuOpen_;
  if (opens) reportOpened();
  AlertView view(alert, screen_.look());
  AlertView* const below = std::exchange(alert_, &view);
  layOut(alert_);
  needsDrawing_ = true;

  std::optional<int> answer;
  while (!answer && !ended_) {
    const Input input = nextInput();
    const bool seen = !isTooSmall(screen_.size());
    if (seen || input.kind == Input::Kind::escape) answer = view.handle(input);
    if (!seen || input.kind != Input::Kind::character) continue;
    if (input.character != U'c' && input.character != U'C') continue;
    if (const auto told = takeCommand(alert.command, input.character == U'c')) view.setNote(*told);
  }

  alert_ = below;
  layOut(alert_);
  needsDrawing_ = true;
  if (opens) reportClosed();
  if (!ended_) draw();  // the alert disappears now: what follows may take a while
  return answer.value_or(kAlertDismissed);
}

std::shared_ptr<ScheduledWork> TerminalFrontEnd::every(double seconds, std::function<void()> work) {
  return work_.add(screen_.now() + seconds, seconds, std::move(work));
}

std::shared_ptr<ScheduledWork> TerminalFrontEnd::after(double seconds, std::function<void()> work) {
  return work_.add(screen_.now() + seconds, 0, std::move(work));
}

void TerminalFrontEnd::terminate() {
  ended_ = true;
}

}  // namespace terminal
