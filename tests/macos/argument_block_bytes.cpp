#include "macos/argument_block_bytes.h"

#include <cstring>

namespace darwin {

std::string rawArgumentBlock(std::int32_t argc, std::string_view rest) {
  std::string block(sizeof argc, '\0');
  std::memcpy(block.data(), &argc, sizeof argc);
  return block.append(rest);
}

std::string argumentBlock(std::string_view path, const std::vector<std::string>& arguments,
                          const std::vector<std::string>& environment) {
  constexpr std::size_t kAlignment = 8;
  std::string rest(path);
  rest.append(kAlignment - rest.size() % kAlignment, '\0');
  for (const auto& strings : {arguments, environment}) {
    for (const std::string& one : strings) rest.append(one).push_back('\0');
  }
  return rawArgumentBlock(static_cast<std::int32_t>(arguments.size()), rest);
}

}  // namespace darwin
