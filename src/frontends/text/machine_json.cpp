#include "frontends/text/machine_json.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "platform/words.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/memory_units.h"
#include "text/format.h"
#include "text/json_writer.h"
#include "ui/memory_pressure_view.h"
#include "ui/pressure_level.h"
#include "ui/process_color.h"

namespace {

constexpr int kFormat = 1;  // counts up when a member goes away or means something else

std::uint64_t wholeBytes(double amount, double unit) {
  return static_cast<std::uint64_t>(std::max(std::llround(amount * unit), 0LL));
}

std::uint64_t bytesOfMB(double mb) {
  return wholeBytes(mb, kBytesPerMB);
}

std::uint64_t bytesOfGB(double gb) {
  return wholeBytes(gb, kBytesPerGB);
}

std::string inUtc(std::time_t time) {
  std::tm parts{};
  gmtime_r(&time, &parts);
  std::array<char, 32> buffer{};
  const std::size_t length =
      std::strftime(buffer.data(), buffer.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {buffer.data(), length};
}

std::string webColor(const Color& color) {
  const auto byteOf = [](double part) {
    return static_cast<unsigned>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
  };
  return text::format("#%02x%02x%02x", byteOf(color.red), byteOf(color.green), byteOf(color.blue));
}

std::optional<double> ageInSeconds(const VordaProcess& process, std::uint64_t processClock) {
  constexpr double kNanoseconds = 1e9;
  if (!process.startTime || *process.startTime > processClock) return std::nullopt;
  return std::floor(static_cast<double>(processClock - *process.startTime) / kNanoseconds);
}

void addMachine(text::JsonWriter& json, const SystemMemory::Snapshot& sys) {
  const double pressure = sys.totalGB > 0 ? std::clamp(sys.usedGB / sys.totalGB, 0.0, 1.0) : 0;
  json.key("machine").beginObject();
  json.member("system", platform::words().system);
  json.member("memoryTotalBytes", bytesOfGB(sys.totalGB));
  json.member("memoryUsedBytes", bytesOfGB(sys.usedGB));
  json.member("memoryFreeBytes", bytesOfGB(sys.freeGB));
  json.member("memoryIsLimited", sys.isLimit);
  if (sys.swappedGB) json.member("swapUsedBytes", bytesOfGB(*sys.swappedGB));
  if (sys.stalls) {
    json.key("memoryStalls").beginObject();
    json.member("somePercent", sys.stalls->some);
    json.member("fullPercent", sys.stalls->full);
    json.endObject();
  }
  json.member("pressure", pressure);
  json.member("pressureLevel", pressureWord(pressureLevel(pressure)));
  json.endObject();
}

void addMapped(text::JsonWriter& json, const MappedMemory& mapped) {
  if (mapped.mappedMB > 0) json.member("mappedBytes", bytesOfMB(mapped.mappedMB));
  if (mapped.sharedMB > 0) json.member("sharedBytes", bytesOfMB(mapped.sharedMB));
  if (mapped.files.empty()) return;
  json.key("mappedFiles").beginArray();
  for (const MappedMemory::File& file : mapped.files) {
    json.beginObject();
    json.member("file", file.name);
    json.member("bytes", bytesOfMB(file.memMB));
    json.member("isModel", file.isModel);
    json.endObject();
  }
  json.endArray();
}

void addGpuMemory(text::JsonWriter& json, const GpuMemory& memory) {
  json.member("gpuMemoryBytes", bytesOfMB(memory.memMB));
  json.key("gpuShares").beginArray();
  for (const GpuMemory::Share& share : memory.shares) {
    json.beginObject();
    json.member("gpu", share.card);
    json.member("bytes", bytesOfMB(share.memMB));
    json.endObject();
  }
  json.endArray();
}

void addProcess(text::JsonWriter& json, const VordaProcess& process, std::uint64_t processClock) {
  json.beginObject();
  json.member("pid", process.pid);
  json.member("name", process.displayName);
  json.member("product", process.product);
  json.member("role", rawValue(process.labRole));
  json.member("memoryBytes", bytesOfMB(process.memMB));
  if (process.gpuMemory) addGpuMemory(json, *process.gpuMemory);
  if (process.mapped) addMapped(json, *process.mapped);
  json.member("owner", process.ownerName);
  json.member("protected", process.isProtected);
  json.member("ageSeconds", ageInSeconds(process, processClock));
  json.member("processesBelow", process.processesBelow);
  if (process.leftBehindBy) json.member("leftBehindBy", *process.leftBehindBy);
  json.key("launchAgents").beginArray();
  for (const std::string& label : process.matchedAgents) json.value(label);
  json.endArray();
  json.member("color", webColor(ProcessColor::color(process)));
  json.member("commandLine", process.commandLine);
  json.member("commandLineCut", process.isCommandLineCut);
  json.endObject();
}

void addLaunchAgent(text::JsonWriter& json, const VordaLaunchAgent& launchAgent) {
  json.beginObject();
  json.member("label", launchAgent.label);
  json.member("file", launchAgent.plistPath);
  json.member("program", CredentialMask::maskedLine(launchAgent.program));
  json.member("keepAlive", launchAgent.keepAlive);
  json.member("loaded", launchAgent.loaded);
  json.member("pid", launchAgent.pid);
  json.endObject();
}

/// Those that are listed for their cards' memory alone come last: they hold less than the others.
void addProcesses(text::JsonWriter& json, const MachineSample& sample) {
  json.key("processes").beginArray();
  for (const VordaProcess& process : sample.processes) {
    addProcess(json, process, sample.processClock);
  }
  if (sample.gpus != nullptr) {
    for (const VordaProcess& process : sample.gpus->unlisted) {
      if (GpuSampling::isOfInterest(process)) addProcess(json, process, sample.processClock);
    }
  }
  json.endArray();
}

void addGpus(text::JsonWriter& json, const GpuSample* gpus) {
  json.key("gpus").beginArray();
  if (gpus != nullptr) {
    for (const GpuCard& card : gpus->cards) {
      json.beginObject();
      json.member("gpu", card.name);
      json.member("memoryTotalBytes", bytesOfGB(card.totalGB));
      json.member("memoryUsedBytes", bytesOfGB(card.usedGB));
      json.endObject();
    }
  }
  json.endArray();
}

void addFamilies(text::JsonWriter& json, const ShownFamilies* families) {
  json.key("families").beginArray();
  if (families != nullptr) {
    for (const auto& [head, family] : families->all()) {
      json.beginObject();
      json.member("head", head);
      json.member("name", family.main().displayName);
      json.member("memoryAtMostBytes", bytesOfMB(family.memMB));
      json.key("members").beginArray();
      for (const VordaProcess* member : family.members) {
        json.beginObject();
        json.member("pid", member->pid);
        json.member("name", member->displayName);
        json.member("memoryBytes", bytesOfMB(member->memMB));
        json.endObject();
      }
      json.endArray();
      json.endObject();
    }
  }
  json.endArray();
}

}  // namespace

std::string machineJson(const MachineSample& sample) {
  text::JsonWriter json;
  json.beginObject();
  json.member("format", kFormat);
  json.member("version", sample.version);
  json.member("time", inUtc(sample.time));
  addMachine(json, sample.sys);
  addProcesses(json, sample);
  addGpus(json, sample.gpus);
  addFamilies(json, sample.families);
  json.key("launchAgents").beginArray();
  for (const VordaLaunchAgent& launchAgent : sample.launchAgents) addLaunchAgent(json, launchAgent);
  json.endArray();
  json.endObject();
  return json.text() + "\n";
}
