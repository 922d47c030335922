#include "platform/memory.h"

#include <sys/sysinfo.h>

#include "platform/linux/file_reader.h"
#include "platform/linux/mem_info.h"
#include "platform/linux/procfs.h"

namespace platform {
namespace {

/// The kernel's own count of what /proc/meminfo calls MemTotal.
double installedBytes() {
  struct sysinfo info = {};
  if (sysinfo(&info) != 0) return 0;
  return static_cast<double>(info.totalram) * info.mem_unit;
}

}  // namespace

MemoryReading readMemory(const ProcFs& proc) {
  FileReader reader(1 << 20);
  MemoryReading reading = memoryIn(proc.read("meminfo", reader).value_or(""));
  if (reading.totalBytes == 0) reading.totalBytes = installedBytes();
  return reading;
}

MemoryReading readMemory() {
  return readMemory(systemProc());
}

}  // namespace platform
