#include <string>

#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"
#include "ui/row_parts.h"

namespace MenuConstruction {
namespace {

// A pid decides before `loaded` does: the two may disagree, and then both are shown.
std::string statusText(const VordaLaunchAgent& agent) {
  if (agent.pid) return "on · pid " + std::to_string(*agent.pid);
  return agent.loaded ? "on" : "off";
}

}  // namespace

MenuItem agentItem(const VordaLaunchAgent& agent) {
  MenuItem item =
      MenuBuilders::named("", text::shortened(text::displayName(agent.label), 40, 38),
                          RowParts::kSeparator + statusText(agent) + (agent.keepAlive ? " ↺" : ""));
  item.submenu = {agent.loaded ? MenuBuilders::command("Stop / unload", Action::unloadAgent, agent)
                               : MenuBuilders::command("Start / load", Action::loadAgent, agent)};
  return item;
}

}  // namespace MenuConstruction
