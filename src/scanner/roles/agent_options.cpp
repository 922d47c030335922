#include "scanner/roles/agent_options.h"

#include "scanner/command_line/option_values.h"

namespace recognition {

bool hasAgentOptions(const Invocation& invocation) {
  // They let a program act without asking.
  constexpr std::string_view kUnasked =
      "--dangerously-skip-permissions --yolo --full-auto --allow-all-tools "
      "--dangerously-bypass-approvals-and-sandbox --dangerously-allow-all";
  if (hasOption(invocation, kUnasked)) return true;
  // Whoever is told the provider beside the model talks to a model that somebody else serves.
  return hasOption(invocation, "--provider") && hasOption(invocation, "--model");
}

}  // namespace recognition
