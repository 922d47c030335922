#include "frontends/text/run_text.h"

#include "frontends/text/text_front_end.h"
#include "ui/alert.h"
#include "ui/status_bar_controller.h"

int runText(std::FILE* out) {
  TextFrontEnd frontEnd;
  const StatusBarController controller(frontEnd, Alert{});  // nobody can choose "About"
  return frontEnd.print(*controller.rootMenu(), out);
}
