#include "platform/linux/gpu_reader.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

#include "platform/linux/memory.h"
#include "platform/linux/nvidia_driver.h"
#include "platform/linux/own_program.h"
#include "platform/memory.h"
#include "platform/processes.h"

namespace platform {
namespace {

/// The capacity of a card that has no memory of its own: the machine's.
std::optional<GpuCapacity> sharedCapacity() {
  const MemoryReading memory = readMemory();
  if (memory.totalBytes < 1 || !memory.inUse) return std::nullopt;
  return GpuCapacity{static_cast<std::uint64_t>(memory.totalBytes),
                     static_cast<std::uint64_t>(memory.inUse->usedBytes)};
}

/// Puts together what several sources say of the same devices and processes.
class Merging {
 public:
  std::size_t place(const GpuDevice& device) {
    const auto [known, isNew] = places_.try_emplace(device.id, devices_.size());
    if (isNew) {
      devices_.push_back(device);
    } else if (GpuDevice& there = devices_[known->second]; !there.capacity) {
      there.capacity = device.capacity;
    }
    return known->second;
  }

  /// Two sources may both know only a part: the larger figure counts.
  void take(const GpuUse& use) {
    const auto [known, isNew] = uses_.try_emplace({use.pid, use.device}, use);
    if (!isNew && use.bytes > known->second.bytes) known->second = use;
  }

  GpuReading reading() const {
    GpuReading reading;
    std::vector<std::size_t> placeOf(devices_.size());
    for (const auto& [id, place] : places_) {
      const bool isUsed = std::ranges::any_of(
          uses_, [&, card = place](const auto& use) { return use.first.second == card; });
      if (!devices_[place].capacity && !isUsed) continue;
      placeOf[place] = reading.devices.size();
      reading.devices.push_back(devices_[place]);
    }
    for (const auto& [key, use] : uses_) {
      reading.uses.push_back(use);
      reading.uses.back().device = placeOf[use.device];
    }
    std::ranges::sort(reading.uses, [](const GpuUse& a, const GpuUse& b) {
      return std::pair(a.pid, a.device) < std::pair(b.pid, b.device);
    });
    return reading;
  }

 private:
  std::map<std::string, std::size_t> places_;  ///< by id
  std::vector<GpuDevice> devices_;
  std::map<std::pair<std::int32_t, std::size_t>, GpuUse> uses_;
};

GpuReader* replacement = nullptr;

GpuReader::Options systemOptions() {
  GpuReader::Options options;
  options.helper.program = findOwnProgram("vorda-gpu");
  options.library = [] { return findNvidiaLibrary(); };
  options.pidsAreTheDrivers = isInFirstPidNamespace();
  return options;
}

GpuReader& gpuReader() {
  if (replacement != nullptr) return *replacement;
  static GpuReader reader(systemTree(), systemProc(), systemOptions());
  return reader;
}

}  // namespace

GpuReader::GpuReader(const FileTree& sys, const ProcFs& proc, Options options)
    : sys_(sys),
      options_(std::move(options)),
      helper_(options_.helper),
      clients_(proc, options_.clients) {}

bool GpuReader::Pace::allows(Clock::time_point now, std::chrono::seconds interval) {
  if (last_ && now - *last_ < interval) return false;
  last_ = now;
  return true;
}

GpuReading GpuReader::read(const GpuQuestion& question) {
  const auto now = options_.now();
  const auto interval = question.isWatched ? options_.watchedInterval : options_.interval;
  hearDriver(now);
  if (driverPace_.allows(now, interval)) askDriver(now);
  if (kernelPace_.allows(now, interval)) askKernel();
  if (!question.pids.empty() && clientsPace_.allows(now, interval)) {
    clients_.look(cards_, question.pids);
  } else if (question.isWatched) {
    clients_.lookAtNew(cards_, question.pids);
  }
  return reading();
}

void GpuReader::await() {
  const auto now = options_.now();
  if (driverPace_.allows(now, options_.watchedInterval)) askDriver(now);
  while (helper_.isAsked()) {
    helper_.await();
    hearDriver(options_.now());
  }
}

const std::string& GpuReader::library(Clock::time_point now) {
  constexpr std::chrono::seconds kUntilNextLook{60};
  if (library_.empty() && (!lookedForLibrary_ || now - *lookedForLibrary_ >= kUntilNextLook)) {
    lookedForLibrary_ = now;
    library_ = options_.library();
  }
  return library_;
}

void GpuReader::askDriver(Clock::time_point now) {
  if (options_.helper.program.empty() || library(now).empty()) return;
  const NvidiaCards cards = nvidiaCards(sys_);
  if (cards.oneSleeps) {
    // A helper that merely has the driver's library open would keep the card awake.
    helper_.end();
    heard_ = now;
    return;
  }
  helper_.ask(library_, cards.oneMaySleep);
}

void GpuReader::hearDriver(Clock::time_point now) {
  auto heard = helper_.hear();
  if (heard && !heard->answer.error) {
    heard_ = now;
    nvidia_ = {std::move(heard->answer.devices), std::move(heard->answer.uses)};
    if (!options_.pidsAreTheDrivers) nvidia_.uses.clear();
    for (GpuUse& use : nvidia_.uses) use.askedAt = heard->askedAt;
    for (GpuDevice& device : nvidia_.devices) {
      if (!device.capacity) device.capacity = sharedCapacity();
    }
  } else if (now - heard_ > options_.longestStanding) {
    nvidia_ = {};
  }
}

void GpuReader::askKernel() {
  std::vector<DrmCard> cards = drmCards(sys_);
  for (DrmCard& card : cards) {
    const auto before = std::ranges::find(cards_, card.id, &DrmCard::id);
    if (card.sleeps && before != cards_.end()) card.capacity = before->capacity;
  }
  cards_ = std::move(cards);

  std::erase_if(kfd_, [this](const KfdUse& use) {
    return std::ranges::none_of(
        cards_, [&](const DrmCard& card) { return card.id == use.card && card.sleeps; });
  });
  if (!options_.pidsAreTheDrivers) return;
  const std::uint64_t askedAt = processClock();
  for (const auto& [key, bytes] : kfdUses(sys_, cards_)) {
    kfd_.push_back({key.first, cards_[key.second].id, bytes, askedAt});
  }
}

GpuReading GpuReader::reading() const {
  Merging merging;
  std::vector<std::size_t> places;
  for (const GpuDevice& device : nvidia_.devices) places.push_back(merging.place(device));
  for (GpuUse use : nvidia_.uses) {
    use.device = places[use.device];
    merging.take(use);
  }
  places.clear();
  for (const DrmCard& card : cards_) {
    places.push_back(merging.place({card.id, card.name, card.capacity}));
  }
  for (GpuUse use : clients_.uses(cards_)) {
    use.device = places[use.device];
    merging.take(use);
  }
  for (const KfdUse& use : kfd_) {
    merging.take({use.pid, merging.place({.id = use.card}), use.bytes, use.askedAt});
  }
  return merging.reading();
}

bool isInFirstPidNamespace() {
  constexpr std::string_view kFirst = "pid:[4026531836]";
  std::array<char, 64> name{};
  const ssize_t length = readlink("/proc/self/ns/pid", name.data(), name.size());
  return length > 0 && std::string_view(name.data(), static_cast<std::size_t>(length)) == kFirst;
}

void replaceGpuReader(GpuReader* reader) {
  replacement = reader;
}

GpuReading readGpus(const GpuQuestion& question) {
  return gpuReader().read(question);
}

void awaitGpus() {
  gpuReader().await();
}

}  // namespace platform
