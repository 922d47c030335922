#pragma once

#include <string>
#include <vector>

#include "scanner/vorda_process.h"

// What is said of a process's memory beside its own footprint.

/// What a process holds of graphics cards' memory, in words: "GPU memory: 36.10 GB on NVIDIA H100",
/// a line for each card, of at most eight; empty where it holds none, or that isn't known.
std::vector<std::string> gpuLines(const VordaProcess& process);

/// What a process has mapped and shares, in words: "Mapped: 1.5 GB", "Shared: 1.0 GB"; empty where
/// that is not worth a word.
std::vector<std::string> mappedLines(const VordaProcess& process);

/// The same with half a sentence that says why it is not in the memory above.
std::vector<std::string> explainedMappedLines(const VordaProcess& process);

/// The largest files that it has mapped, a line for each: "  llama.gguf  ·  1.5 GB".
std::vector<std::string> mappedFileLines(const VordaProcess& process);

/// "  ·  +1.5 GB mapped" for the row of an AI workload that has a model mapped; else "".
std::string mappedEnding(const VordaProcess& process);
