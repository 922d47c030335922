#include "virtual_display.h"

#include <unistd.h>

namespace bench {

VirtualDisplay::VirtualDisplay() {
  int number[2];
  if (pipe(number) != 0) return;
  server_ = std::make_unique<Child>(
      std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(number[1]), "-screen", "0",
                               "1280x1024x24", "-nolisten", "tcp"},
      std::vector<std::string>{}, Child::Output::discarded);
  close(number[1]);
  // It writes its number, whatever that is, and a line feed once it is ready.
  char c = 0;
  std::string digits;
  while (read(number[0], &c, 1) == 1 && c != '\n') digits += c;
  close(number[0]);
  if (!digits.empty()) name_ = ":" + digits;
}

}  // namespace bench
