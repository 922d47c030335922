#pragma once

/// The names of systemd's manager on the user's bus.
namespace platform::ServiceManager {

inline constexpr const char* kName = "org.freedesktop.systemd1";
inline constexpr const char* kPath = "/org/freedesktop/systemd1";
inline constexpr const char* kInterface = "org.freedesktop.systemd1.Manager";

/// The error that there is no such unit, or that it is not loaded.
inline constexpr const char* kNoSuchUnit = "org.freedesktop.systemd1.NoSuchUnit";

/// A unit in the lists of ListUnitsByPatterns and ListUnitsByNames: name, description, load
/// state, active state, sub state, what it follows, object, number, type and object of its
/// systemd job.
inline constexpr const char* kListedUnit = "(ssssssouso)";

}  // namespace platform::ServiceManager
