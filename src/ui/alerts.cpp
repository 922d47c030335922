#include "ui/alerts.h"

#include <algorithm>
#include <array>

#include "launch_agents/vorda_launch_agent.h"
#include "platform/words.h"
#include "scanner/memory_format.h"
#include "scanner/vorda_process.h"
#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/family_rows.h"
#include "ui/memory_lines.h"
#include "ui/name_limits.h"

std::vector<std::string> Alert::shownButtons() const {
  return buttons.empty() ? std::vector<std::string>{"OK"} : buttons;
}

int Alert::escapeAnswer() const {
  const auto cancel = std::ranges::find(buttons, kCancel);
  if (cancel == buttons.end()) return kAlertDismissed;
  return kAlertFirstButtonReturn + static_cast<int>(cancel - buttons.begin());
}

namespace Alerts {
namespace {

constexpr std::size_t kShownCommandCharacters = 800;

/// The beginning of the command line, with a line that says so when it is not all of it.
std::string shownCommand(const VordaProcess& process) {
  const std::string_view whole = process.commandLine;
  const std::string_view shown = text::firstCharacters(whole, kShownCommandCharacters);
  std::string text = text::displayLines(shown);
  if (process.isCommandLineCut || shown.size() < whole.size()) {
    text += "\n\nThe command line goes on: these are its first " +
            std::to_string(text::characterCount(shown)) + " characters.";
  }
  return text;
}

std::string gpuLinesBelow(const VordaProcess& process) {
  std::string lines;
  for (const std::string& line : gpuLines(process)) lines += "\n" + line;
  return lines;
}

std::string leftBehindBelow(const VordaProcess& process) {
  const std::string line = leftBehindLine(process);
  return line.empty() ? "" : "\n" + line;
}

std::string sharedBelow(const VordaProcess& process, const std::vector<std::string>& shares) {
  std::string below;
  for (const auto& lines : {explainedMappedLines(process), mappedFileLines(process), shares}) {
    for (const std::string& line : lines) below += "\n" + line;
  }
  return below;
}

std::string systemMonitor() {
  return std::string(platform::words().systemMonitor);
}

Alert forceQuit(const std::string& name, std::int32_t pid, const std::string& memoryLine) {
  return {.messageText = "Force Quit?",
          .informativeText =
              name + "\nPID " + std::to_string(pid) + memoryLine + "\n\nThis cannot be undone.",
          .style = Alert::Style::warning,
          .buttons = {"Force Quit", Alert::kCancel}};
}

}  // namespace

bool isShown(std::string_view title) {
  const std::string lower = text::lowered(title);
  constexpr std::array<std::string_view, 3> kWordsOfFailure{"fail", "protect", "cannot"};
  return std::ranges::any_of(kWordsOfFailure,
                             [&lower](auto word) { return lower.find(word) != std::string::npos; });
}

Alert notice(const std::string& title, const std::string& message) {
  return {.messageText = text::displayLine(title), .informativeText = text::displayLines(message)};
}

std::string protectedMessage(const VordaProcess& process) {
  return text::displayName(process.displayName) + " is owned by " +
         text::displayName(process.ownerName) + ".\n\nVorda cannot force-quit it.";
}

Alert forceQuit(const VordaProcess& process) {
  return forceQuit(text::displayName(process.displayName), process.pid,
                   "\n" + MemoryFormat::detail(process.memMB) + " RAM (" + systemMonitor() + ")");
}

Alert forceQuit(std::int32_t pid) {
  return forceQuit("process", pid, "");
}

Alert endFamily(const ShownFamily& family, bool force) {
  constexpr std::size_t kMostNamed = 20;
  std::string names;
  std::string furtherPids;
  std::size_t own = 0;
  for (const VordaProcess* member : family.members) {
    if (member->isProtected) continue;
    const std::string pid = std::to_string(member->pid);
    if (++own > kMostNamed) {
      furtherPids += (furtherPids.empty() ? "" : ", ") + pid;
    } else {
      names += "\n" +
               NameLimits::cut(text::displayName(member->displayName), NameLimits::kProcessName) +
               "  ·  pid " + pid;
    }
  }
  if (own > kMostNamed) {
    names += "\nand " + std::to_string(own - kMostNamed) + " more  ·  pid " + furtherPids;
  }
  const std::size_t others = family.members.size() - own;
  if (others > 0) {
    names += "\n\n" + std::to_string(others) +
             (others == 1 ? " more belongs to somebody else, and stays."
                          : " more belong to somebody else, and stay.");
  }
  const std::string verb = force ? "Force Quit" : "Quit";
  return {
      .messageText = verb + " all " + std::to_string(own) + " processes of " + family.name + "?",
      .informativeText =
          names.substr(1) + (force ? "\n\nThis cannot be undone."
                                   : "\n\nThe first is asked to end; after 5 seconds, "
                                     "those that are still there."),
      .style = Alert::Style::warning,
      .buttons = {verb + " all", Alert::kCancel}};
}

Alert details(const VordaProcess& process, const std::vector<std::string>& shares,
              const std::string& place) {
  return {.messageText = text::displayName(process.displayName),
          .informativeText =
              "Memory: " + MemoryFormat::detail(process.memMB) + "  (" + systemMonitor() +
              " scale)\nKind: " + text::displayName(process.product) + "\nPID: " +
              std::to_string(process.pid) + "\nOwner: " + text::displayName(process.ownerName) +
              (place.empty() ? "" : "\n" + text::displayName(place)) + gpuLinesBelow(process) +
              leftBehindBelow(process) + sharedBelow(process, shares) +
              (process.isProtected ? "\n\nProtected: cannot Force Quit from Vorda." : "") +
              "\n\nCommand:\n" + shownCommand(process),
          .command = wholeCommand(process)};
}

std::string wholeCommand(const VordaProcess& process) {
  return text::displayLine(process.commandLine) + (process.isCommandLineCut ? " …" : "");
}

Alert quitDocker() {
  return {.messageText = "Quit Docker Desktop",
          .informativeText = "Use the Docker whale icon → Quit Docker Desktop."};
}

Alert unload(const VordaLaunchAgent& launchAgent) {
  return {.messageText = "Unload " + text::displayName(launchAgent.label) + "?",
          .informativeText = "Stops it and prevents KeepAlive restart.\n" +
                             text::displayLine(launchAgent.plistPath),
          .buttons = {"Unload", Alert::kCancel}};
}

}  // namespace Alerts
