#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct ShownFamily;
struct VordaLaunchAgent;
struct VordaProcess;

/// A modal question or message. Plain text throughout.
struct Alert {
  /// How grave it is.
  enum class Style { informational, warning };
  /// The picture beside the text: the style's own, or the program's badge.
  enum class Icon { standard, badge };
  static constexpr double kBadgeSide = 48;  ///< in points
  /// The button that leaves all as it is. A Mac's alerts give Escape to it, by this very title.
  static constexpr const char* kCancel = "Cancel";

  std::string messageText;             ///< the question or message, in bold
  std::string informativeText;         ///< what there is to know of it, below
  Style style = Style::informational;  ///< how grave it is
  Icon icon = Icon::standard;          ///< what stands beside the text
  /// The command line that it is about, in one line, as it may be copied; "" for none.
  std::string command;
  /// In order; the first is the default. Empty: one button that dismisses the alert.
  std::vector<std::string> buttons;
  /// Whether the program comes to the front for it, where a program can be behind others.
  bool activatesProgram = true;

  /// The buttons as they are shown, in order: never empty.
  std::vector<std::string> shownButtons() const;

  /// What FrontEnd::runModal answers when the user presses Escape or closes the alert: the button
  /// kCancel; where there is none, kAlertDismissed.
  int escapeAnswer() const;

  bool operator==(const Alert&) const = default;
};

/// What FrontEnd::runModal answers for the first button; the next ones follow by one each.
inline constexpr int kAlertFirstButtonReturn = 1000;

/// The answer of an alert that was closed without a button.
inline constexpr int kAlertDismissed = 0;

/// Every question and message that the menu's actions show, as values. A name that others chose is
/// made one harmless line, so that it can't imitate a line of ours. Only a command line, which
/// comes last, keeps its line feeds.
namespace Alerts {

/// Whether a result with this title is shown: only failures are. After a success the change in the
/// menu is feedback enough.
bool isShown(std::string_view title);

/// How an action ended.
Alert notice(const std::string& title, const std::string& message);

/// Why a process that belongs to somebody else is not force-quit.
std::string protectedMessage(const VordaProcess& process);

/// The question before a process is force-quit; the first button does it.
Alert forceQuit(const VordaProcess& process);
/// The same for a process of which only the pid is known.
Alert forceQuit(std::int32_t pid);

/// The question before all of a family that are the user's own are ended, which names them; the
/// first button does it.
Alert endFamily(const ShownFamily& family, bool force);

/// All that is known of a process; of its command line the first 800 characters, and
/// a line that says so where there are more.
/// `shares`: lines about memory that it shares with others.
/// `place`: placeOfOthers() (process_whereabouts.h), "" for unknown.
Alert details(const VordaProcess& process, const std::vector<std::string>& shares = {},
              const std::string& place = {});

/// A process's command line, masked and harmless, in one line; it ends in "…" where the process has
/// more than is known.
std::string wholeCommand(const VordaProcess& process);

/// How to quit Docker Desktop.
Alert quitDocker();

/// The question before a launch agent is stopped; the first button does it.
Alert unload(const VordaLaunchAgent& launchAgent);

}  // namespace Alerts
