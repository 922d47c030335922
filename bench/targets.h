#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace bench {

/// What a figure may be at the most. A figure that is not here is only told.
struct Target {
  std::string_view figure;
  double atMost;
};

inline constexpr auto kTargets = std::to_array<Target>({
    {"scan/floor@500", 0.70},
    {"scan/floor@2000", 0.75},
    {"refresh/floor@500", 0.80},
    {"refresh/floor@2000", 0.85},
    {"scan/floor, cold@500", 0.70},
    {"scan/floor, cold@2000", 0.75},
    {"refresh/floor, cold@500", 0.80},
    {"refresh/floor, cold@2000", 0.85},
    {"terminal/cheapest peer@500", 0.5},
    {"terminal/cheapest peer@2000", 0.5},
    {"tray/cheapest peer@500", 0.5},
    {"tray/cheapest peer@2000", 0.5},
    {"first paint/btop@500", 1},
    {"first paint/btop@2000", 1},
    {"terminal: RssAnon (MB)@500", 2.2},
    {"terminal: RssAnon (MB)@2000", 2.8},
    // 1.15 times what a refresh without any took before what is not resting alone was read.
    {"refresh with AI work/floor@500", 0.83},
    {"refresh with AI work/floor@2000", 1.02},
    {"scan/ps@500", 0.30},
    {"scan/ps@2000", 0.30},
    {"scan/psutil@500", 0.20},
    {"scan/psutil@2000", 0.20},
    {"scan/top@500", 0.45},
    {"scan/top@2000", 0.45},
    {"scan/htop@500", 0.10},
    {"scan/htop@2000", 0.10},
    {"scan/btop@500", 0.65},
    {"scan/btop@2000", 1.0},
    {"scan/gnome-system-monitor@500", 0.30},
    {"scan/gnome-system-monitor@2000", 0.35},
    {"allocations of an unchanged scan@500", 0},
    {"allocations of an unchanged scan@2000", 0},
    {"allocations of an unchanged refresh@500", 0},
    {"allocations of an unchanged refresh@2000", 0},
    {"allocations per process not kept", 0},
    {"redactSecrets of 64 KiB (ms)", 1},
    {"maskedLine of 64 KiB (ms)", 1},
    {"shown of 64 KiB (ms)", 2},  // both maskers, one after the other
    {"names of 64 KiB (ms)", 1},
    {"formats of 64 KiB (ms)", 1},
    {"URLs of 64 KiB (ms)", 1},
    {"programs of 64 KiB (ms)", 1},
    {"sampler memory@500 (MB)", 1},
    {"sampler memory@2000 (MB)", 2},
    {"terminal, menu closed: wakeups per 5 s", 1},
    {"terminal, menu closed: anonymous memory (MB)", 2},
    {"tray, menu never opened: wakeups per 5 s", 1},
    {"tray, menu never opened: anonymous memory (MB)", 5},
    {"tray, menu closed again: wakeups per 5 s", 1},
    {"tray, menu closed again: anonymous memory (MB)", 8},
    {"terminal, one letter of 30,000 marks: submenu (CPU s)", 0.2},
    {"terminal, one letter of 30,000 marks: details (CPU s)", 0.2},
    {"filter of 10,000 rows: showing all (ms)", 100},
    {"filter of 10,000 rows: the dearest letter (ms)", 100},
    {"tray, one letter of 30,000 marks: menu (CPU s)", 0.2},
    {"tray, one letter of 30,000 marks: menu again (CPU s)", 0.2},
    {"tray, one letter of 30,000 marks: details (CPU s)", 0.2},
    {"terminal, letters of 40 marks: submenu (CPU s)", 0.2},
    {"terminal, letters of 40 marks: details (CPU s)", 0.2},
    {"tray, letters of 40 marks: menu (CPU s)", 0.2},
    {"tray, letters of 40 marks: menu again (CPU s)", 0.2},
    {"tray, letters of 40 marks: details (CPU s)", 0.2},
});

constexpr std::optional<double> targetOf(std::string_view figure) {
  for (const auto& target : kTargets) {
    if (target.figure == figure) return target.atMost;
  }
  return std::nullopt;
}

}  // namespace bench
