#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "ui/memory_pressure_view.h"

// The strip where words or a row of characters stand in for the picture.

/// The strip in words, for those who can't see it: "Memory 62 percent used: Ollama Server
/// 4.1 GB, firefox 312 MB"; with cards also "; GPU memory 48 percent used: Ollama Server 36.1 GB".
std::string stripDescription(const MemoryPressureView& strip);

/// The letter of the segment at this place, from 0: A, B, C … from the left; "+" beyond Z.
char segmentLetter(std::size_t place);

/// The letter of a segment in the track of the cards, which the strip must have: the letter that
/// the process has in the track above, else one that is not used there.
char gpuSegmentLetter(const MemoryPressureView& strip, std::size_t place);

/// What ties a process's row to its segment: "  [A]"; "" for a process without one.
std::string segmentTag(const MemoryPressureView& strip, std::int32_t pid);

/// How many characters the segment at this place takes in a track of `columns` of them, 1 or
/// more: its share of the track, rounded down, but at least one. Together the segments may take
/// more than there are.
std::size_t segmentLength(std::span<const Segment> segments, std::size_t place,
                          std::size_t columns);
