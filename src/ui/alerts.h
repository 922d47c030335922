#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "launch_agents/vorda_launch_agent.h"
#include "scanner/vorda_process.h"
#include "ui/alert.h"

/// Every question and message that the menu's actions show, as values. Names that others
/// chose are one harmless line each, so that they can't pass for a line of ours; only a
/// command line, which stands last, keeps its line feeds.
namespace Alerts {

/// Whether an outcome with this title is shown at all: only failures are. The menu's own
/// change is the feedback of a success.
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
