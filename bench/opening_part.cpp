#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

#include "child.h"
#include "cpu_clock.h"
#include "parts.h"
#include "population.h"
#include "tray_desktop.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kRows = 100;  // rather more than a menu has room for
constexpr std::size_t kLongestArgument = 60'000;

/// A name that somebody chose to be dear to show.
struct Name {
  std::string kind;
  std::string text;
};

std::string repeated(const std::string& text, std::size_t bytes = kLongestArgument) {
  std::string result;
  while (result.size() + text.size() <= bytes) result += text;
  return result;
}

std::vector<Name> names() {
  const std::string mark = "\u0301";
  const std::string joiner = "\u200D";
  return {
      {"plain", "firefox"},
      {"a long word", repeated("x")},
      {"one letter of 30,000 marks", "e" + repeated(mark)},
      {"letters of 40 marks", repeated("e" + repeated(mark, 80))},
      {"joiners", "x" + repeated(joiner)},
      {"joined emoji", repeated("👩" + joiner)},
      {"flags", repeated("🇩")},
      {"both directions", repeated("aש1م")},
      {"many scripts",
       repeated("अ ঀ ა አ ក ᠠ ꯀ 𐌀 𒀀 𓀀 𝐀 ꙮ 文 가 あ ﷽")},
      {"no glyphs of any font", repeated("\U000F0001\U0001FAFF\U00013460\U0001E900")},
  };
}

/// Processes of all three roles whose names, models and command lines are the name.
std::vector<IdleProcess> planNamed(const std::string& name) {
  std::vector<IdleProcess> plan;
  for (std::size_t i = 0; i < kRows; ++i) {
    IdleProcess process{.executable = "named", .memoryKiB = 1024};
    const std::string own = name + std::to_string(i);
    switch (i % 3) {
      case 0:
        process.arguments = {"/opt/" + own, "vllm"};
        break;
      case 1:
        process.arguments = {"/opt/" + own, "crewai"};
        break;
      default:
        process.arguments = {"trl", "sft", "--model", own};
    }
    plan.push_back(std::move(process));
  }
  return plan;
}

/// The CPU seconds that a program spends on something, until it is at rest again. Other work
/// that it does meanwhile, as a refresh, is among them.
double costOf(const Child& child, const std::function<void()>& begin,
              const std::function<void()>& meanwhile) {
  constexpr auto kRest = 700ms;
  constexpr double kNoise = 0.0005;
  const double before = cpuSecondsOf(child.pid());
  begin();
  double last = before;
  const auto end = Clock::now() + 120s;
  for (auto still = Clock::now() + kRest; Clock::now() < still && Clock::now() < end;) {
    std::this_thread::sleep_for(10ms);
    meanwhile();
    const double now = cpuSecondsOf(child.pid());
    if (now - last > kNoise) still = Clock::now() + kRest;
    last = now;
  }
  return last - before;
}

void measureTray(const Name& name, Report& report) {
  if (!isInstalled(TRAY_PROGRAM)) return report.missing("tray", "not built");
  TrayDesktop desktop;
  if (!desktop.problem().empty()) return report.missing("tray", desktop.problem());
  Child child({TRAY_PROGRAM}, desktop.environment(), Child::Output::discarded);
  const auto answer = [&desktop] { desktop.answer(); };
  costOf(
      child, [] {}, answer);
  if (!desktop.hasIcon()) return report.missing("tray", "no icon appears");

  const auto tell = [&](const std::string& what, const std::function<void()>& begin) {
    report.figure("opening", "tray, " + name.kind + ": " + what + " (CPU s)",
                  costOf(child, begin, answer));
  };
  tell("menu", [&] { desktop.click(); });
  desktop.click();
  costOf(
      child, [] {}, answer);
  tell("menu again", [&] { desktop.click(); });
  desktop.click();
  costOf(
      child, [] {}, answer);
  tell("details", [&] { desktop.choose("Full details…"); });
  report.figure("opening", "tray, " + name.kind + ": longest label (bytes)",
                static_cast<double>(desktop.longestLabel()));
}

void measureTerminal(const Name& name, Report& report) {
  Child child({PROGRAM}, {"TERM=xterm-256color", "LANG=C.UTF-8", "SSH_TTY=/dev/pts/0"},
              Child::Output::terminal);
  const auto drain = [&child] { child.drain(); };
  costOf(
      child, [] {}, drain);
  const auto tell = [&](const std::string& what, const std::string& keys) {
    report.figure("opening", "terminal, " + name.kind + ": " + what + " (CPU s)",
                  costOf(
                      child, [&] { child.type(keys); }, drain));
  };
  tell("submenu", "\r");
  child.type("\x1b[F");  // its end: the details
  costOf(
      child, [] {}, drain);
  tell("details", "\r");
}

}  // namespace

void measureOpening(const Options&, Report& report) {
  report.section("Opening, with " + std::to_string(kRows) + " processes of one kind of name");
  for (const Name& name : names()) {
    try {
      const Population population(planNamed(name.text));
      measureTerminal(name, report);
      measureTray(name, report);
    } catch (const std::runtime_error& error) {
      report.missing(name.kind, error.what());
    }
  }
}

}  // namespace bench
