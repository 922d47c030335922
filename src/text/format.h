#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

namespace text {

/// printf into a string. The program never sets LC_NUMERIC, so the decimal sign is ".".
[[gnu::format(printf, 1, 2)]] inline std::string format(const char* pattern, ...) {
  std::va_list arguments;
  va_start(arguments, pattern);
  char buffer[512];
  const int length = std::vsnprintf(buffer, sizeof buffer, pattern, arguments);
  va_end(arguments);
  if (length < 0) return {};
  const auto wanted = static_cast<std::size_t>(length);
  return {buffer, wanted < sizeof buffer ? wanted : sizeof buffer - 1};
}

}  // namespace text
