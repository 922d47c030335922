// The program with a front end that another program leads, one line of standard input a step:
//
//   refresh        five seconds have passed: the timer's work runs
//   keep PID       keeps the entry that quits this process, as a menu does that stays open
//   quit           the kept entry is chosen
//
// Each is answered by a line "process PID NAME" for each that is in the list, a line "alert
// TITLE" for each that was shown, the menu as text with "| " before each line, and "done".
#include <cstdio>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/branding.h"
#include "fakes/blind_front_end.h"
#include "frontends/text/menu_text.h"
#include "text/display_line.h"
#include "ui/status_bar_controller.h"

namespace {

/// Says "yes" to every alert, and keeps its title.
class LedFrontEnd : public BlindFrontEnd {
 public:
  std::vector<std::string> takeAlerts() { return std::exchange(alerts_, {}); }

  int runModal(const Alert& alert) override {
    alerts_.push_back(alert.messageText);
    return kAlertFirstButtonReturn;
  }

 private:
  std::vector<std::string> alerts_;
};

const MenuItem* quitEntry(const std::vector<MenuItem>& items, std::int32_t pid) {
  for (const MenuItem& item : items) {
    if (item.action == Action::quitProcess && item.process && item.process->pid == pid) {
      return &item;
    }
    if (const MenuItem* found = quitEntry(item.submenu, pid)) return found;
  }
  return nullptr;
}

void answer(const StatusBarController& controller, LedFrontEnd& frontEnd) {
  std::string text;
  for (const VordaProcess& process : controller.processes()) {
    text += "process " + std::to_string(process.pid) + " " +
            text::displayLine(process.displayName) + "\n";
  }
  for (const std::string& alert : frontEnd.takeAlerts()) {
    text += "alert " + text::displayLine(alert) + "\n";
  }
  std::istringstream lines(menuText(*controller.rootMenu()));
  for (std::string line; std::getline(lines, line);) text += "| " + line + "\n";
  text += "done\n";
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

}  // namespace

int main() {
  LedFrontEnd frontEnd;
  StatusBarController controller(frontEnd, Branding::aboutAlert());
  std::shared_ptr<const MenuItem> kept;
  for (std::string line; std::getline(std::cin, line);) {
    std::istringstream words(line);
    std::string step;
    std::int32_t pid = 0;
    words >> step >> pid;
    if (step == "refresh") frontEnd.runTimer();
    if (step == "keep") {
      const auto& menu = controller.rootMenu();
      kept = {menu, quitEntry(menu->items, pid)};
    }
    if (step == "quit" && kept) controller.perform(kept);
    answer(controller, frontEnd);
  }
}
