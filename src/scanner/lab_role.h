#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The role of a process: what an AI workload does. The values index tables in this order; the scan
/// sorts in another one (scan_order.h).
enum class LabRole : std::uint8_t {
  inference,  ///< a model server or local inference runtime
  training,   ///< a training or fine-tuning job
  agent,      ///< an agent framework, MCP server or similar tool process
  none,       ///< an ordinary process
};

/// "inference", "training", "agent" or "none".
std::string_view rawValue(LabRole role);

/// The role whose raw value is exactly this text; none for any other text.
std::optional<LabRole> labRole(std::string_view rawValue);
