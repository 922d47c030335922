#include "ui/process_color.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "text/unicode.h"

namespace ProcessColor {
namespace {

constexpr std::array<Color, 8> kPalette{{
    {0.2, 0.92, 0.55},
    {0.35, 0.75, 1.0},
    {1.0, 0.72, 0.2},
    {0.95, 0.4, 0.55},
    {0.7, 0.55, 1.0},
    {0.3, 0.95, 0.9},
    {1.0, 0.5, 0.25},
    {0.55, 0.85, 0.35},
}};

constexpr std::int64_t kLeastHash = std::numeric_limits<std::int64_t>::min();

/// The polynomial hash before its sign is dropped.
std::int64_t signedHash(std::string_view text) {
  std::uint64_t bits = 0;  // unsigned, because only there wrapping is defined
  for (const char byte : text) bits = bits * 31 + static_cast<unsigned char>(byte);
  return static_cast<std::int64_t>(bits);
}

std::size_t paletteIndex(std::string_view key) {
  const std::int64_t hash = signedHash(key);
  if (hash == kLeastHash)
    return 0;  // stableHash would abort, and anybody can name a process like this
  return static_cast<std::size_t>(hash < 0 ? -hash : hash) % kPalette.size();
}

}  // namespace

std::string familyKey(const VordaProcess& process) {
  if (process.labRole != LabRole::none) return "role:" + std::string(rawValue(process.labRole));
  if (process.product == "System" || process.isProtected) return "family:system";
  if (process.product != "Process" && process.product != "App") {
    return "product:" + text::lowered(process.product);
  }
  return "name:" + text::lowered(process.displayName);
}

std::int64_t stableHash(std::string_view text) {
  const std::int64_t hash = signedHash(text);
  if (hash == kLeastHash) {
    std::fputs("vorda: a colour key hashes to -2^63, which has no absolute value\n", stderr);
    std::abort();
  }
  return hash < 0 ? -hash : hash;
}

Color color(const VordaProcess& process) {
  const std::string key = familyKey(process);
  if (key == "family:system" || key == "family:windowserver" || key == "family:spotlight") {
    return systemMuted();
  }
  return kPalette[paletteIndex(key)];
}

std::span<const Color, 8> palette() {
  return kPalette;
}

Color systemMuted() {
  return Color::white(0.55);
}

}  // namespace ProcessColor
