#include "frontends/text/text_front_end.h"

#include <cerrno>
#include <csignal>
#include <cstring>

#include "frontends/text/menu_text.h"
#include "platform/gpus.h"
#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

namespace {

struct NoWork : ScheduledWork {
  void cancel() override {}
};

/// While it exists, writing to a pipe without a reader is an error and does not end the process.
class PipeSignalIgnored {
 public:
  PipeSignalIgnored() : earlier_(std::signal(SIGPIPE, SIG_IGN)) {}
  ~PipeSignalIgnored() { std::signal(SIGPIPE, earlier_); }
  PipeSignalIgnored(const PipeSignalIgnored&) = delete;
  PipeSignalIgnored& operator=(const PipeSignalIgnored&) = delete;

 private:
  void (*earlier_)(int);
};

}  // namespace

int TextFrontEnd::print(const Menu& menu, std::FILE* out) {
  const std::string text = menuText(menu);
  const PipeSignalIgnored ignored;
  errno = 0;
  if (std::fwrite(text.data(), 1, text.size(), out) == text.size() && std::fflush(out) == 0) {
    return 0;
  }
  std::fprintf(stderr, "vorda: can't write the menu: %s\n", std::strerror(errno));
  return 1;
}

std::shared_ptr<ScheduledWork> TextFrontEnd::every(double, std::function<void()>) {
  return std::make_shared<NoWork>();
}

std::shared_ptr<ScheduledWork> TextFrontEnd::after(double, std::function<void()>) {
  return std::make_shared<NoWork>();
}

int runText(std::FILE* out) {
  TextFrontEnd frontEnd;
  platform::awaitGpus();                                    // there is no second look
  const StatusBarController controller(frontEnd, Alert{});  // nobody can choose "About"
  return frontEnd.print(*controller.rootMenu(), out);
}
