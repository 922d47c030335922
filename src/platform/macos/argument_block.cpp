#include "platform/macos/argument_block.h"

#include <cstdint>
#include <cstring>

#include "platform/posix/utf8.h"

namespace platform {
namespace {

constexpr char kEnd = '\0';

/// Cuts the first string off, and the NULs behind it.
std::string_view takeString(std::string_view& rest) {
  const std::string_view first = rest.substr(0, rest.find(kEnd));
  rest.remove_prefix(first.size());
  const auto next = rest.find_first_not_of(kEnd);
  rest.remove_prefix(next == std::string_view::npos ? rest.size() : next);
  return first;
}

/// Room for the whole block is reserved before: the views stay valid while it fills.
void append(std::string_view argument, ProcessFacts& facts) {
  if (!facts.arguments.empty()) facts.commandLine += ' ';
  const std::size_t begin = facts.commandLine.size();
  facts.commandLine += argument;
  facts.arguments.push_back(std::string_view(facts.commandLine).substr(begin));
}

}  // namespace

void readArgumentBlock(std::string_view block, ProcessFacts& facts) {
  facts.commandLine.clear();
  facts.commandLine.reserve(block.size());
  facts.arguments.clear();

  std::int32_t count = 0;
  if (block.size() < sizeof count) return;
  std::memcpy(&count, block.data(), sizeof count);
  std::string_view rest = block.substr(sizeof count);

  takeString(rest);  // the executable's path
  for (; count > 0 && !rest.empty(); --count) {
    const std::string_view argument = takeString(rest);
    if (isUtf8(argument)) append(argument, facts);
  }
}

}  // namespace platform
