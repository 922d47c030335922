#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "launch_agents/vorda_launch_agent.h"
#include "scanner/vorda_process.h"
#include "ui/alert.h"

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

/// All that is known of a process; of its command line the first 800 characters, and
/// a line that says so where there are more.
Alert details(const VordaProcess& process);

/// How to quit Docker Desktop.
Alert quitDocker();

/// The question before a launch agent is stopped; the first button does it.
Alert unload(const VordaLaunchAgent& launchAgent);

}  // namespace Alerts
