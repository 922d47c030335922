#pragma once

#include <string>
#include <vector>

#include "scanner/vorda_process.h"

/// What a process holds of graphics cards' memory, in words: "GPU memory: 36.10 GB on NVIDIA H100",
/// a line for each card, of at most eight; empty where it holds none, or that isn't known.
std::vector<std::string> gpuLines(const VordaProcess& process);
