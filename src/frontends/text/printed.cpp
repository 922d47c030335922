#include "frontends/text/printed.h"

#include <cerrno>
#include <csignal>
#include <cstring>

namespace {

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

Printed print(const std::string& text, std::FILE* out) {
  const PipeSignalIgnored ignored;
  errno = 0;
  if (std::fwrite(text.data(), 1, text.size(), out) == text.size() && std::fflush(out) == 0) {
    return Printed::whole;
  }
  return errno == EPIPE ? Printed::readerGone : Printed::failed;
}

int sayNotPrinted(const char* what) {
  std::fprintf(stderr, "vorda: can't write %s: %s\n", what, std::strerror(errno));
  return 1;
}

int printOrSay(const std::string& text, const char* what, std::FILE* out) {
  return print(text, out) == Printed::whole ? 0 : sayNotPrinted(what);
}
