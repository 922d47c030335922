#pragma once

#include <string>

#include "ui/memory_pressure_view.h"

/// The strip in words, for those who can't see it: "Memory 62 percent used: Ollama Server
/// 4.1 GB, firefox 312 MB".
std::string stripDescription(const MemoryPressureView& strip);
