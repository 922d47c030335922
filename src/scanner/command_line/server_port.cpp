#include "scanner/command_line/server_port.h"

#include <algorithm>
#include <optional>

#include "scanner/command_line/option_values.h"
#include "scanner/command_line/program_names.h"
#include "text/ascii.h"

namespace recognition {
namespace {

/// Where a server may be told its port, after its own options.
constexpr std::string_view kPortOptions =
    "--port --listen-port --server-port --http-port --api-port --address --listen --bind --host";

/// Digits alone.
std::optional<std::string_view> portOf(const Invocation& invocation, std::string_view options) {
  const Arguments arguments = lookedAt(invocation);
  for (const std::string_view list : {options, kPortOptions}) {
    for (const std::string_view option : listed(list)) {
      auto value = valueOf(arguments, option);
      if (!value) continue;
      const auto colon = value->rfind(':');
      if (colon != std::string_view::npos) value = value->substr(colon + 1);
      const bool isNumber =
          !value->empty() && value->size() <= 5 && std::ranges::all_of(*value, text::isDigit);
      if (isNumber) return value;
    }
  }
  return std::nullopt;
}

}  // namespace

bool isPortOption(std::string_view word) {
  return word == "-p" || isListed(kPortOptions, word);
}

std::string portSuffix(const Invocation& invocation, std::string_view options, LabRole role) {
  auto port = portOf(invocation, options);
  // Of a server of models "-p" is a port as well; others have prompts and projects.
  if (!port && role == LabRole::inference) {
    port = portOf(invocation, "-p");
    if (port && port->size() < 4) port.reset();
  }
  return port ? "  (:" + std::string(*port) + ")" : "";
}

}  // namespace recognition
