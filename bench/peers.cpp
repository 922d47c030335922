#include "peers.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "child.h"
#include "cpu_clock.h"
#include "scratch_folder.h"
#include "virtual_display.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// A program that refreshes by itself. What it does in between (a clock, a cursor) counts to the
/// refresh that follows.
class Monitor : public Peer {
 public:
  Monitor(const std::vector<std::string>& argv, const std::vector<std::string>& environment,
          Child::Output output)
      : child_(argv, environment, output) {
    // What it does first tells nothing of its refreshes: a desktop's monitor loads its pictures.
    for (const auto end = Clock::now() + 4s; Clock::now() < end;) nextBurst();
    std::vector<double> bursts;
    for (const auto end = Clock::now() + 6s; Clock::now() < end;) bursts.push_back(nextBurst());
    least_ = bursts.empty() ? 0 : *std::ranges::max_element(bursts) / 4;
    isLost_ = least_ <= 0;
  }

  double refresh() override {
    double used = 0;
    for (const auto end = Clock::now() + kPatience; !isLost_ && Clock::now() < end;) {
      const double burst = nextBurst();
      if (burst == 0) break;
      used += burst;
      if (burst >= least_) return used;
    }
    isLost_ = true;  // else each further round would take as long
    return 0;
  }

 private:
  /// CPU seconds until it has been busy and is idle again; 0 when it is never busy any more, or
  /// all the time.
  double nextBurst() {
    constexpr double kIdle = 0.0003;  // in 10 ms: some wake up all the time to look around
    const double before = used_;
    const auto deadline = Clock::now() + kPatience;
    std::optional<Clock::time_point> lastBusy;
    for (;;) {
      const double earlier = used_;
      std::this_thread::sleep_for(10ms);
      child_.drain();
      used_ = cpuSecondsOf(child_.pid());
      const auto now = Clock::now();
      if (used_ - earlier > kIdle) lastBusy = now;
      if (lastBusy && now - *lastBusy > 100ms) return used_ - before;
      if (!child_.running() || now > deadline) return 0;
    }
  }

  static constexpr auto kPatience = 20s;

  Child child_;
  double used_ = 0;
  double least_ = 0;  ///< less is no refresh
  bool isLost_ = false;
};

/// A program that looks once and ends.
class Lister : public Peer {
 public:
  explicit Lister(std::vector<std::string> argv) : argv_(std::move(argv)) {}
  double refresh() override { return cpuSecondsOfRun(argv_); }

 private:
  std::vector<std::string> argv_;
};

/// A monitor with settings in a folder of its own.
class ConfiguredMonitor : public Peer {
 public:
  ConfiguredMonitor(const std::string& file, const std::string& content,
                    const std::vector<std::string>& argv, std::vector<std::string> environment,
                    Child::Output output) {
    const std::filesystem::path path = folder_.path() / file;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << content;
    environment.push_back("XDG_CONFIG_HOME=" + folder_.path().string());
    environment.push_back("HTOPRC=" + path.string());
    monitor_.emplace(argv, environment, output);
  }
  double refresh() override { return monitor_->refresh(); }

 private:
  ScratchFolder folder_;
  std::optional<Monitor> monitor_;
};

/// The desktop's monitor needs a display.
class DesktopMonitor : public Peer {
 public:
  DesktopMonitor() {
    monitor_.emplace("glib-2.0/settings/keyfile",
                     "[org/gnome/gnome-system-monitor]\n"
                     "show-whose-processes='all'\n",
                     std::vector<std::string>{"gnome-system-monitor", "--show-processes-tab"},
                     std::vector<std::string>{"DISPLAY=" + display_.name(), "GDK_BACKEND=x11",
                                              "GSETTINGS_BACKEND=keyfile", "NO_AT_BRIDGE=1"},
                     Child::Output::discarded);
  }
  double refresh() override { return monitor_->refresh(); }

 private:
  VirtualDisplay display_;
  std::optional<ConfiguredMonitor> monitor_;
};

constexpr const char* kPsutilLoop = R"(
import psutil, time
while True:
    list(psutil.process_iter(["pid", "uids", "memory_info", "cmdline"]))
    time.sleep(1)
)";

/// The first Python that has psutil; "" when none has.
std::string pythonWithPsutil() {
  for (const char* python : {"python3", "/usr/bin/python3"}) {
    if (isInstalled(python) && succeeds({python, "-c", "import psutil"})) return python;
  }
  return "";
}

PeerProgram monitor(const std::string& name, std::vector<std::string> argv,
                    Child::Output output = Child::Output::discarded) {
  return {name, isInstalled(argv.front()), [argv, output]() -> std::unique_ptr<Peer> {
            return std::make_unique<Monitor>(argv, std::vector<std::string>{}, output);
          }};
}

PeerProgram terminalMonitor(const std::string& name, std::vector<std::string> argv) {
  return {name, isInstalled(argv.front()), [argv]() -> std::unique_ptr<Peer> {
            return std::make_unique<ConfiguredMonitor>("empty", "", argv, terminalEnvironment(),
                                                       Child::Output::terminal);
          }};
}

}  // namespace

std::vector<std::string> terminalEnvironment() {
  return {"TERM=xterm-256color", "LANG=C.UTF-8"};
}

std::vector<PacedMonitor> pacedMonitors() {
  return {{"top", {"top", "-c", "-d", "5"}, "", ""},
          {"htop", {"htop", "-d", "50"}, "", ""},
          {"btop", {"btop", "--utf-force"}, "btop/btop.conf", "update_ms = 5000\n"}};
}

std::vector<PeerProgram> peerPrograms() {
  const std::string python = pythonWithPsutil();
  return {
      {"ps", isInstalled("ps"),
       []() -> std::unique_ptr<Peer> {
         return std::make_unique<Lister>(
             std::vector<std::string>{"ps", "-eo", "pid,euid,rss,args"});
       }},
      monitor("top", {"top", "-b", "-c", "-d", "1"}),
      monitor("psutil", {python, "-c", kPsutilLoop}),
      terminalMonitor("htop", {"htop"}),
      terminalMonitor("btop", {"btop", "--utf-force"}),
      {"gnome-system-monitor", isInstalled("gnome-system-monitor") && isInstalled("Xvfb"),
       []() -> std::unique_ptr<Peer> { return std::make_unique<DesktopMonitor>(); }},
  };
}

}  // namespace bench
