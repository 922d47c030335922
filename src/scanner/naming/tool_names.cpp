#include <array>
#include <span>

#include "scanner/naming/friendly_naming.h"

namespace ProcessScanner {
namespace {

/// One part of a tool, shown under a name of its own.
struct Component {
  MarkerSet marker;
  std::string_view name;  // "" : no component
};

/// A tool that is recognised by any of the markers or by the executable's name. It is shown by
/// the name of the first component whose marker the line contains, else by its own.
struct Tool {
  MarkerSet markers;
  std::string_view exe;  // "" : recognised by markers alone
  std::array<Component, 2> components;
  std::string_view name;
  std::string_view product;
};

constexpr Tool kTools[] = {
    {{"/.hermes/", "hermes_cli"},
     "hermes",
     {{{"gateway", "Hermes Gateway"}, {"agent", "Hermes Agent"}}},
     "Hermes",
     "Hermes"},
    {"/ollama", "ollama", {{{"serve", "Ollama Server"}}}, "Ollama", "Ollama"},
    {"/.brevik/", "brevik", {{{"dashboard", "Brevik Dashboard"}}}, "Brevik", "Brevik"},
    // "zentho.mcp" always contains "mcp", so the bare name only appears for "-m zentho".
    {{"zentho.mcp", "-m zentho"}, "", {{{"mcp", "Zentho MCP Server"}}}, "Zentho", "Zentho"},
};

constexpr Tool kHelpers[] = {
    {"com.docker.vmnet", "com.docker.vmnetd", {}, "Docker network helper (root)", "Docker"},
    {"com.docker.backend", "com.docker.backend", {}, "Docker Desktop backend", "Docker"},
    // "/Docker.app/" has a capital, so it never matches a lowered line. That is intended: Docker's
    // own application is named after its bundle like any other ("Docker", "App").
    {{"/Docker.app/", "com.docker."}, "", {}, "Docker Desktop", "Docker"},
    {"containermanagerd", "containermanagerd", {}, "Apple containermanagerd", "System"},
};

std::optional<FriendlyName> firstOf(std::span<const Tool> tools, std::string_view exe,
                                    const SearchedLine& line) {
  for (const Tool& tool : tools) {
    const bool isExe = !tool.exe.empty() && exe == tool.exe;
    if (!isExe && !line.hasAny(tool.markers)) continue;
    for (const Component& component : tool.components) {
      if (line.has(component.marker)) {
        return FriendlyName{std::string(component.name), std::string(tool.product)};
      }
    }
    return FriendlyName{std::string(tool.name), std::string(tool.product)};
  }
  return std::nullopt;
}

}  // namespace

std::optional<FriendlyName> knownTool(std::string_view exe, const SearchedLine& line) {
  return firstOf(kTools, exe, line);
}

std::optional<FriendlyName> knownHelper(std::string_view exe, const SearchedLine& line) {
  return firstOf(kHelpers, exe, line);
}

}  // namespace ProcessScanner
