#include "virtual_display.h"

#include "line_from_child.h"

namespace bench {

VirtualDisplay::VirtualDisplay() {
  LineFromChild number;
  // Without -noreset it would start over whenever its last client goes.
  server_ = std::make_unique<Child>(
      std::vector<std::string>{"Xvfb", "-displayfd", number.descriptor(), "-screen", "0",
                               "1280x1024x24", "-nolisten", "tcp", "-noreset"},
      std::vector<std::string>{}, Child::Output::discarded);
  const std::string digits = number.read();
  if (!digits.empty()) name_ = ":" + digits;
}

}  // namespace bench
