#include "platform/macos/argument_block.h"

#include <cstdint>
#include <cstring>

#include "platform/posix/argument_list.h"

namespace platform {
namespace {

constexpr char kEnd = '\0';

/// Removes the first string, and the NULs behind it, from `rest` and returns the string.
std::string_view takeString(std::string_view& rest) {
  const std::string_view first = rest.substr(0, rest.find(kEnd));
  rest.remove_prefix(first.size());
  const auto next = rest.find_first_not_of(kEnd);
  rest.remove_prefix(next == std::string_view::npos ? rest.size() : next);
  return first;
}

}  // namespace

void readArgumentBlock(std::string_view block, ProcessFacts& facts) {
  startArguments(facts, block.size());

  std::int32_t count = 0;
  if (block.size() < sizeof count) return;
  std::memcpy(&count, block.data(), sizeof count);
  std::string_view rest = block.substr(sizeof count);

  takeString(rest);  // the executable's path
  for (; count > 0 && !rest.empty(); --count) appendArgument(takeString(rest), facts);
}

}  // namespace platform
