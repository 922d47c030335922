#include "ui/memory_warning_text.h"

#include "scanner/memory_format.h"
#include "scanner/memory_units.h"
#include "text/display_line.h"
#include "text/format.h"

namespace {

std::string wordsFor(const MemoryCulprit& culprit) {
  const std::string name = text::displayName(culprit.name);
  const std::string held = MemoryFormat::detail(culprit.memMB);
  if (culprit.grownMB <= 0) return " The largest process is " + name + " with " + held + ".";
  return " " + name + " holds " + held + ", " + MemoryFormat::detail(culprit.grownMB) +
         text::format(" more than %.0f s ago.", culprit.seconds);
}

}  // namespace

MemoryWarning memoryWarning(const MemoryWarningRule::Warning& warning,
                            const SystemMemory::Snapshot& sys) {
  MemoryWarning said;
  if (warning.trouble == MemoryTrouble::runsOut) {
    said.title = "Memory is running out";
    said.text = MemoryFormat::detail(sys.availableGB.value_or(0) * kMBPerGB) + " of " +
                MemoryFormat::detail(sys.totalGB * kMBPerGB) + " left.";
  } else {
    said.title = "Processes wait for memory";
    const platform::MemoryStalls stalls = sys.stalls.value_or(platform::MemoryStalls{});
    said.text = text::format("Some %.0f%%, all %.0f%% of the last 10 s.", stalls.some, stalls.full);
  }
  if (warning.culprit) {
    said.text += wordsFor(*warning.culprit);
    said.process = warning.culprit->process;
  }
  return said;
}
