#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "scanner/vorda_process.h"
#include "ui/color.h"

/// The colour of a process. It is the same in the list, in the strip and in every run, because it
/// depends only on the process's family key.
namespace ProcessColor {

/// The name of the group of processes that share a colour: "role:training", "family:system",
/// "product:ollama", "name:safari". The role wins over everything else.
std::string familyKey(const VordaProcess& process);

/// The absolute value of a polynomial hash over the bytes (multiplier 31, signed 64 bits that
/// wrap). Ends the program for -2^63, which has no absolute value in 64 bits.
std::int64_t stableHash(std::string_view text);

/// The process's colour: systemMuted() for the system's family, else the colour of palette() at
/// stableHash of its family key modulo 8; the first one for the hash that would end the program.
Color color(const VordaProcess& process);

/// The eight colours that processes have.
std::span<const Color, 8> palette();

/// The grey of system processes and of those that belong to others.
Color systemMuted();

}  // namespace ProcessColor
