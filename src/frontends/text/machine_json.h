#pragma once

#include <cstdint>
#include <ctime>
#include <span>
#include <string>
#include <string_view>

#include "launch_agents/vorda_launch_agent.h"
#include "scanner/gpu_sample.h"
#include "scanner/system_memory.h"
#include "scanner/vorda_process.h"
#include "ui/family_rows.h"

/// All that a sample found out about the machine.
struct MachineSample {
  std::string_view version;                        ///< the program's
  std::time_t time = 0;                            ///< when it was taken
  std::uint64_t processClock = 0;                  ///< platform::processClock() at that time
  SystemMemory::Snapshot sys;                      ///< the whole machine's memory
  std::span<const VordaProcess> processes;         ///< in the scan's order
  std::span<const VordaLaunchAgent> launchAgents;  ///< those of interest
  const GpuSample* gpus = nullptr;                 ///< nullptr for none
  const ShownFamilies* families = nullptr;         ///< nullptr for none
};

/// The sample as one JSON object on one line, ended by "\n", in ASCII. docs/json.md says what each
/// member means and which may change: its schema is the promise that is kept here.
std::string machineJson(const MachineSample& sample);
