#include "line_from_child.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace bench {

LineFromChild::LineFromChild() {
  if (pipe(ends_) != 0) {
    std::perror("pipe");
    std::exit(1);
  }
  fcntl(ends_[0], F_SETFD, FD_CLOEXEC);
}

LineFromChild::~LineFromChild() {
  close(ends_[0]);
  if (ends_[1] >= 0) close(ends_[1]);
}

std::string LineFromChild::read() {
  close(ends_[1]);
  ends_[1] = -1;
  std::string line;
  char c = 0;
  while (::read(ends_[0], &c, 1) == 1 && c != '\n') line += c;
  return line;
}

}  // namespace bench
