#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// What the user's service manager may start by itself. A plain value.
struct VordaLaunchAgent {
  std::string label;                ///< the name that the manager knows it by
  std::string plistPath;            ///< full path of the launch agent file
  std::string program;              ///< the first four words of its command; "" when none
  bool keepAlive = false;           ///< the manager starts it anew when it ends
  bool loaded = false;              ///< the manager holds it
  std::optional<std::int32_t> pid;  ///< set while it runs

  /// When the manager was asked for the pid: platform::LaunchAgentAnswer::askedAt.
  std::uint64_t pidAskedAt = 0;

  /// What tells it from every other: one label is loaded at most once.
  const std::string& id() const { return label; }

  /// Whether the process with this pid, which started at `startTime`, is this launch agent's: the
  /// manager named the pid, and the process was already there when the manager was asked. A
  /// process that started later, or at an unknown time, may be another one that was given the pid
  /// since. Both times are on platform::processClock().
  bool runsAs(std::int32_t process, std::optional<std::uint64_t> startTime) const;

  /// The six fields that are shown, from `label` to `pid`, in this order.
  bool operator==(const VordaLaunchAgent& other) const;
};

/// For sets and maps of launch agents.
template <>
struct std::hash<VordaLaunchAgent> {
  /// Over the fields that operator== compares, so that equal values hash equally.
  std::size_t operator()(const VordaLaunchAgent& launchAgent) const noexcept;
};
