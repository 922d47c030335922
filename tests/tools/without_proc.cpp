#include "tools/without_proc.h"

#include <unistd.h>

#include "tools/background_program.h"

std::vector<std::string> withoutProc(const std::string& program) {
  std::vector<std::string> command{"unshare", "--mount"};
  if (geteuid() != 0) command.emplace_back("--map-root-user");
  command.insert(command.end(), {"sh", "-c", R"(mount -t tmpfs none /proc && exec "$0")", program});
  return command;
}

bool canHideProc() {
  return runProgram(withoutProc("true")) == 0;
}
