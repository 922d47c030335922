#pragma once

#include <algorithm>
#include <sstream>
#include <string>

#include "scanner/vorda_process.h"

/// Every field of a record in one line, also where a field holds line feeds.
inline std::string recordLine(const VordaProcess& process) {
  std::ostringstream line;
  line << std::hexfloat << process.pid << '\t' << process.displayName << '\t' << process.product
       << '\t' << process.memMB << '\t' << process.cpu << '\t' << process.commandLine << '\t'
       << rawValue(process.labRole) << '\t' << process.matchedAgents.size();
  for (const auto& launchAgent : process.matchedAgents) line << '\t' << launchAgent;
  line << '\t' << process.isProtected << '\t' << process.ownerName;
  line << '\t' << process.identity.value_or(0) << '\t' << process.processesBelow << '\t'
       << process.isCommandLineCut;
  std::string text = line.str();
  std::replace(text.begin(), text.end(), '\n', '\x1e');
  return text;
}
