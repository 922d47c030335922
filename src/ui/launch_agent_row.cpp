#include <optional>
#include <string>
#include <utility>

#include "text/display_line.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"
#include "ui/name_limits.h"
#include "ui/row_glyphs.h"

namespace MenuConstruction {
namespace {

// A pid counts more than `loaded`. The two may disagree, and then both are shown.
std::string statusText(const VordaLaunchAgent& launchAgent,
                       std::optional<LaunchAgentOperation::Kind> underWay) {
  if (underWay) return *underWay == LaunchAgentOperation::Kind::stop ? "stopping…" : "starting…";
  if (launchAgent.pid) return "on · pid " + std::to_string(*launchAgent.pid);
  return launchAgent.loaded ? "on" : "off";
}

}  // namespace

MenuItem launchAgentItem(const VordaLaunchAgent& launchAgent,
                         std::optional<LaunchAgentOperation::Kind> underWay) {
  // One that is starting can be stopped even if it is not loaded yet, because its start may never
  // end.
  const bool stops = launchAgent.loaded || underWay == LaunchAgentOperation::Kind::start;
  MenuItem command =
      stops ? MenuBuilders::command("Stop / unload", Action::unloadLaunchAgent, launchAgent)
            : MenuBuilders::command("Start / load", Action::loadLaunchAgent, launchAgent);
  command.enabled = underWay != LaunchAgentOperation::Kind::stop;
  MenuItem item = MenuBuilders::named(
      "", NameLimits::cut(text::displayName(launchAgent.label), NameLimits::kLaunchAgentName),
      RowGlyphs::kSeparator + statusText(launchAgent, underWay) +
          (launchAgent.keepAlive ? RowGlyphs::kKeptAlive : ""));
  item.submenu = {std::move(command)};
  return item;
}

}  // namespace MenuConstruction
