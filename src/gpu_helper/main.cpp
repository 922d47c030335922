// vorda-gpu: asks NVIDIA's driver how much memory cards have and who holds it, in a process of its
// own, because the driver's library may wait for ever, and crash. It is started by vorda and
// vorda-tray (platform/linux/gpu_helper.h), reads their questions from standard input, and writes
// the answers to standard output (platform/linux/gpu_answer.h).
//
//   vorda-gpu LIBRARY
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "gpu_helper/nvidia_library.h"
#include "platform/linux/gpu_answer.h"

namespace {

/// How long the driver may take; then alarm(2) ends the program.
constexpr unsigned kPatienceSeconds = 2;
constexpr int kWrongUse = 2;

/// From now on the program ends with the one that started it, can gain no rights (the driver's
/// library likes to start a program that loads kernel modules), and leaves no core file.
void giveUpPower() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  const rlimit none = {};
  setrlimit(RLIMIT_CORE, &none);
}

/// The next question, with its line end; "" when there will be none.
std::string nextLine() {
  constexpr std::size_t kLongest = 64;
  std::string line;
  while (!line.ends_with('\n')) {
    char byte = 0;
    const ssize_t count = read(STDIN_FILENO, &byte, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0 || line.size() == kLongest) return {};
    line += byte;
  }
  return line;
}

std::string linesOf(const platform::GpuAnswer& answer) {
  std::string lines;
  if (answer.error) {
    lines = platform::errorLine(*answer.error);
  } else {
    for (const auto& card : answer.devices) lines += platform::cardLine(card);
    for (const auto& use : answer.uses) lines += platform::useLine(use);
  }
  return lines.append(platform::kLastLine);
}

bool writeWhole(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("vorda-gpu: is started by vorda, which tells it what to load\n", stderr);
    return kWrongUse;
  }
  giveUpPower();
  std::optional<NvidiaLibrary> library;
  for (std::string line = nextLine(); !line.empty(); line = nextLine()) {
    const bool isOnce = line == platform::kAskOnce;
    if (!isOnce && line != platform::kAskAndStay) return kWrongUse;
    alarm(kPatienceSeconds);
    if (!library) library.emplace(argv[1]);
    const std::string lines = linesOf(library->ask());
    if (isOnce) library->letGo();
    alarm(0);
    if (!writeWhole(lines)) break;
  }
  // The driver's own end may hang, too.
  _exit(EXIT_SUCCESS);
}
