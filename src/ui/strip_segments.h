#pragma once

#include <cstddef>
#include <optional>

#include "scanner/gpu_sample.h"
#include "scanner/system_memory.h"
#include "ui/memory_pressure_view.h"
#include "ui/row_order.h"

/// Replaces the strip's segments and pressure: one segment, in the process's colour, for each of
/// `top` that holds more than 0.2 % of all memory, in the given order. False, and the strip
/// stays as it was, when the machine's memory is not known.
bool applyPressureStrip(MemoryPressureView& strip, const SystemMemory::Snapshot& sys,
                        const ProcessList& top);

/// Sets only the pressure. Returns whether the strip now looks different (it shows whole percents
/// and one of three colours). False, and nothing changes, when the memory is not known.
bool applyPressure(MemoryPressureView& strip, const SystemMemory::Snapshot& sys);

/// The strip's track of the cards: a segment for each of the first `most` processes that holds more
/// than 0.2 % of the cards' memory together. None where it is not known how much they have.
std::optional<GpuTrack> gpuTrack(const GpuSample& gpus, std::size_t most);
