#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// One job that the user's service manager may start by itself. A plain value.
struct VordaLaunchAgent {
  std::string label;                ///< the name that the manager knows it by
  std::string plistPath;            ///< full path of the job file
  std::string program;              ///< the first four words of its command; "" when none
  bool keepAlive = false;           ///< the manager starts it anew when it ends
  bool loaded = false;              ///< the manager holds it
  std::optional<std::int32_t> pid;  ///< set while it runs

  /// What tells it from every other: one label is loaded at most once.
  const std::string& id() const { return label; }

  /// All six fields, in declaration order.
  bool operator==(const VordaLaunchAgent&) const = default;
};

/// For sets and maps of agents.
template <>
struct std::hash<VordaLaunchAgent> {
  /// Over all six fields, so that equal values hash equally.
  std::size_t operator()(const VordaLaunchAgent& agent) const noexcept;
};
