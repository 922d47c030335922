#pragma once

#include <optional>

#include "scanner/process_scanner.h"
#include "scanner/recognition/invocation.h"

namespace recognition {

/// "claude mcp serve": a program that is a server of tools besides.
bool servesMcp(const Invocation& invocation);

/// "MCP: filesystem", of a server that is known by the word alone.
ProcessScanner::FriendlyName mcpServerName(const Invocation& invocation);

/// The name of the server that a proxy of MCP starts or speaks to: "mcp-proxy --port 3000 uvx
/// mcp-server-fetch", "supergateway --stdio 'npx -y @scope/server-name'", "mcp-remote
/// https://mcp.linear.app/sse". None where its arguments do not say.
std::optional<ProcessScanner::FriendlyName> carriedServer(const Invocation& invocation);

}  // namespace recognition
