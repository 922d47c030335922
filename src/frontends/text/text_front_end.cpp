#include "frontends/text/text_front_end.h"

#include <poll.h>

#include <chrono>
#include <cmath>
#include <ctime>

#include "frontends/text/bar_json.h"
#include "frontends/text/machine_json.h"
#include "frontends/text/printed.h"
#include "platform/gpus.h"
#include "platform/processes.h"
#include "scanner/system_memory.h"
#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

namespace {

struct NoWork : ScheduledWork {
  void cancel() override {}
};

/// Waits for the cards' figures first, because the first look may be the only one.
TextFrontEnd afterGpus() {
  platform::awaitGpus();
  return {};
}

/// The machine as it is now, as the menu knows it.
struct Sampled {
  TextFrontEnd frontEnd = afterGpus();
  StatusBarController controller{frontEnd, Alert{}};  // nobody can choose "About"
};

/// Waits that long. False when the reader of `out` goes away meanwhile.
bool readerStays(std::FILE* out, double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  for (;;) {
    const double left = std::chrono::duration<double>(end - Clock::now()).count();
    if (left <= 0) return true;
    pollfd output{fileno(out), 0, 0};  // errors and hang-ups alone
    if (poll(&output, 1, static_cast<int>(std::ceil(left * 1000))) > 0) return false;
  }
}

}  // namespace

std::shared_ptr<ScheduledWork> TextFrontEnd::every(double, std::function<void()>) {
  return std::make_shared<NoWork>();
}

std::shared_ptr<ScheduledWork> TextFrontEnd::after(double, std::function<void()>) {
  return std::make_shared<NoWork>();
}

int runText(CharacterSet characters, std::FILE* out) {
  const Sampled sampled;
  return printOrSay(menuText(*sampled.controller.rootMenu(), characters), "the menu", out);
}

int runJson(std::string_view version, std::FILE* out) {
  const Sampled sampled;
  const ShownFamilies families = sampled.controller.families();
  const std::string json = machineJson({.version = version,
                                        .time = std::time(nullptr),
                                        .processClock = platform::processClock(),
                                        .sys = SystemMemory::snapshot(),
                                        .processes = sampled.controller.processes(),
                                        .launchAgents = sampled.controller.launchAgents(),
                                        .gpus = &sampled.controller.gpus(),
                                        .families = &families});
  return printOrSay(json, "the JSON", out);
}

int runBar(std::FILE* out) {
  const Sampled sampled;
  return printOrSay(barJson(*sampled.controller.rootMenu()), "the line", out);
}

int watchBar(std::FILE* out, double seconds) {
  Sampled sampled;
  for (;;) {
    const std::string line = barJson(*sampled.controller.rootMenu());
    const Printed printed = print(line, out);
    if (printed == Printed::failed) return sayNotPrinted("the line");
    if (printed == Printed::readerGone || !readerStays(out, seconds)) return 0;
    sampled.controller.menuNeedsUpdate();
  }
}
