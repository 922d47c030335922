#include "platform/posix/argument_list.h"

#include <algorithm>

#include "text/unicode.h"

namespace platform {
void startArguments(ProcessFacts& facts, std::size_t size) {
  facts.isCut = false;
  facts.arguments.clear();
  facts.commandLine.clear();
  // Reserved at once, so that the views of the arguments stay valid while it fills.
  facts.commandLine.reserve(std::min(size, kLongestCommandLine));
}

void appendArgument(std::string_view argument, ProcessFacts& facts) {
  if (argument.empty() || facts.isCut) return;
  const bool isFirst = facts.arguments.empty();
  const std::size_t used = facts.commandLine.size() + (isFirst ? 0 : 1);
  if (used + argument.size() > kLongestCommandLine) {
    facts.isCut = true;
    if (!isFirst) return;
    argument = text::withinBytes(argument, kLongestCommandLine);
  }
  if (!text::isUtf8(argument)) return;
  if (!isFirst) facts.commandLine += ' ';
  facts.commandLine += argument;
  facts.arguments.push_back(
      std::string_view(facts.commandLine).substr(facts.commandLine.size() - argument.size()));
}

}  // namespace platform
