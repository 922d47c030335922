#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scanner/command_line/invocation.h"
#include "scanner/process_scanner.h"

/// Servers of the Model Context Protocol, which give tools to agents.
namespace recognition {

/// Whether its name or a subcommand says that it is one. `subcommands`: subcommandsOf() it.
bool isMcpServer(const Invocation& invocation, const std::vector<std::string>& subcommands);

/// "claude mcp serve": whether a program of another kind is started as one.
bool servesMcp(const Invocation& invocation);

/// "MCP: filesystem", of a server that is known by the word alone.
ProcessScanner::FriendlyName mcpServerName(const Invocation& invocation);

/// The name of the server that a proxy of MCP starts or speaks to: "mcp-proxy --port 3000 uvx
/// mcp-server-fetch", "supergateway --stdio 'npx -y @scope/server-name'", "mcp-remote
/// https://mcp.linear.app/sse". None where its arguments do not say.
std::optional<ProcessScanner::FriendlyName> proxiedMcpServerName(const Invocation& invocation);

}  // namespace recognition
