#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "scanner/vorda_process.h"
#include "ui/color.h"

/// One colour a process, the same in the list, in the strip and in every run: it depends
/// on nothing but the process's family key.
namespace ProcessColor {

/// The group that shares a colour: "role:training", "family:system", "product:ollama",
/// "name:safari". The role wins over everything else.
std::string familyKey(const VordaProcess& process);

/// A 31-multiplier polynomial hash over the bytes, wrapping at 64 bits, without its sign.
/// The one value that has no positive counterpart, -2^63, ends the program.
std::int64_t stableHash(std::string_view text);

/// The process's colour: systemMuted() for the system's family, else the one of palette() that
/// its family key's stableHash points to; the first where that would end the program.
Color color(const VordaProcess& process);

/// The eight colours that processes have.
std::span<const Color, 8> palette();

/// The grey of system processes and of those that belong to others.
Color systemMuted();

}  // namespace ProcessColor
