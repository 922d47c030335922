#include "scanner/roles/mcp_server.h"

#include <algorithm>

#include "scanner/command_line/program_names.h"
#include "scanner/command_line/server_port.h"
#include "text/unicode.h"

namespace recognition {
namespace {

using ProcessScanner::FriendlyName;

/// Who runs the MCP server at this address: "linear" of "https://mcp.linear.app/sse". Empty where
/// the host's name does not say that it is one.
std::string_view ownerOfHost(std::string_view url) {
  for (const std::string_view scheme : {"https://", "http://"}) {
    if (!url.starts_with(scheme)) continue;
    std::string_view host = url.substr(scheme.size());
    host = host.substr(0, host.find_first_of("/?#"));
    host = host.substr(host.rfind('@') + 1);  // whoever signs in is not shown
    host = host.substr(0, host.find(':'));
    const auto dot = host.rfind('.');
    if (dot == std::string_view::npos || !hasWord(host, "mcp")) return {};
    host = host.substr(0, dot);
    host = host.substr(host.rfind('.') + 1);
    return host == "mcp" ? std::string_view() : host;
  }
  return {};
}

}  // namespace

bool isMcpServer(const Invocation& invocation, const std::vector<std::string>& subcommands) {
  for (const std::string_view name :
       {std::string_view(invocation.program), std::string_view(invocation.package),
        std::string_view(invocation.module), std::string_view(invocation.script),
        std::string_view(invocation.folder)}) {
    if (hasWord(name, "mcp") || hasWord(name, "mcpserver") ||
        hasWord(name, "modelcontextprotocol")) {
      // "mcp install" and its like set a server up.
      return subcommands.empty() ||
             !isListed("install add list remove init login dev-tools --help", subcommands.front());
    }
  }
  if (subcommands.empty()) return false;
  // "serena start-mcp-server"
  if (subcommands.front() != "mcp" && hasWord(subcommands.front(), "mcp") &&
      hasWord(subcommands.front(), "server")) {
    return true;
  }
  const bool saysMcp = subcommands.front() == "mcp";
  return saysMcp &&
         (subcommands.size() == 1 || isListed("serve server start run stdio", subcommands[1]));
}

bool servesMcp(const Invocation& invocation) {
  const Arguments arguments = invocation.arguments;
  return arguments.size() >= 2 && arguments[0] == "mcp" &&
         isListed("serve server start run stdio", arguments[1]);
}

FriendlyName mcpServerName(const Invocation& invocation) {
  constexpr std::string_view kFiller =
      "mcp server servers mcpserver modelcontextprotocol js py ts mjs cjs index main cli dist "
      "latest stdio "
      "run start";
  const auto told = [kFiller](std::string_view name) {
    std::string words;
    for (const std::string_view word : wordsOf(name)) {
      if (isListed(kFiller, word)) continue;
      if (!words.empty()) words += ' ';
      words += word;
    }
    return words;
  };
  const std::string_view scope =
      invocation.package.starts_with('@')
          ? std::string_view(invocation.package).substr(1, invocation.package.find('/') - 1)
          : std::string_view();
  for (const std::string_view name :
       {std::string_view(invocation.package).substr(invocation.package.find('/') + 1), scope,
        std::string_view(invocation.module), std::string_view(invocation.folder),
        std::string_view(invocation.script), std::string_view(invocation.program)}) {
    if (isListed("python node deno bun uvicorn gunicorn hypercorn granian", name)) continue;
    const std::string words = told(name);
    if (!words.empty()) {
      return {"MCP: " + ProcessScanner::basenameModel(words) + portSuffix(invocation, ""), "MCP"};
    }
  }
  return {"MCP server" + portSuffix(invocation, ""), "MCP"};
}

std::optional<FriendlyName> proxiedMcpServerName(const Invocation& invocation) {
  constexpr std::size_t kMostLookedAt = 32;
  const auto serverOf = [](Arguments line) -> std::optional<FriendlyName> {
    if (!isListed("uvx npx uv bunx node python python3 pipx pnpm deno bun",
                  programName(line.front()))) {
      return std::nullopt;
    }
    const Invocation server = invocationOf(line);
    const bool isKnown = !server.package.empty() || !server.module.empty();
    FriendlyName name = mcpServerName(server);
    if (!isKnown || !name.displayName.starts_with("MCP: ")) return std::nullopt;
    return name;
  };
  const Arguments arguments = invocation.arguments;
  for (std::size_t i = 0; i < std::min(arguments.size(), kMostLookedAt); ++i) {
    const std::string_view word = arguments[i];
    if (word.find(' ') != std::string_view::npos) {
      const auto words = listed(text::withinBytes(word, kLongestName));
      if (words.empty()) continue;
      if (auto name = serverOf(words)) return name;
    } else if (auto name = serverOf(arguments.subspan(i))) {
      return name;
    } else if (const std::string_view owner = ownerOfHost(word); !owner.empty()) {
      return FriendlyName{"MCP: " + ProcessScanner::basenameModel(owner), "MCP"};
    }
  }
  return std::nullopt;
}

}  // namespace recognition
