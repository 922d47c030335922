#include "platform/processes.h"

#include "platform/process_place.h"

namespace platform {

std::span<const std::int32_t> allPids() {
  return {};
}

bool lookAtProcess(std::int32_t, ProcessFacts&) {
  return false;
}

bool readCommandLine(ProcessFacts&) {
  return false;
}

std::optional<Fingerprint> executableOfProcess() {
  return std::nullopt;
}

std::optional<std::uint64_t> physicalFootprint(std::int32_t) {
  return std::nullopt;
}

bool confirmProcess(std::int32_t, ProcessFacts&) {
  return true;
}

std::optional<std::uint64_t> processIdentity(std::int32_t) {
  return std::nullopt;
}

std::optional<ProcessState> processState(std::int32_t) {
  return std::nullopt;
}

std::uint64_t processClock() {
  return 0;
}

std::string placeOfProcess(std::int32_t) {
  return {};
}

std::optional<std::string> workingFolderOfProcess(std::int32_t) {
  return std::nullopt;
}

std::int32_t ownPid() {
  return 0;  // no process of anybody's
}

}  // namespace platform
