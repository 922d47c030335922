#include "platform/linux/drm_process_memory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <memory>
#include <tuple>
#include <utility>

#include "platform/linux/drm_fdinfo.h"
#include "platform/processes.h"

namespace platform {
namespace {

const DrmCard* cardOf(const std::vector<DrmCard>& cards, const DrmCard::Node& node) {
  for (const DrmCard& card : cards) {
    for (const DrmCard::Node& one : card.nodes) {
      if (one.majorNumber == node.majorNumber && one.minorNumber == node.minorNumber) return &card;
    }
  }
  return nullptr;
}

}  // namespace

DrmProcessMemory::DrmProcessMemory(const ProcFs& proc) : DrmProcessMemory(proc, Options{}) {}

DrmProcessMemory::DrmProcessMemory(const ProcFs& proc, Options options)
    : proc_(proc), options_(std::move(options)) {}

/// Asks only for the type of an open file, which the kernel knows without waiting for anybody, even
/// if the file is on a server that is gone.
std::optional<DrmCard::Node> DrmProcessMemory::deviceOfDescriptor(int folder, const char* name) {
  struct statx status = {};
  constexpr int kFlags = AT_STATX_DONT_SYNC | AT_NO_AUTOMOUNT;
  if (statx(folder, name, kFlags, STATX_TYPE, &status) != 0 || !S_ISCHR(status.stx_mode)) {
    return std::nullopt;
  }
  return DrmCard::Node{status.stx_rdev_major, status.stx_rdev_minor};
}

void DrmProcessMemory::look(const std::vector<DrmCard>& cards, std::span<const std::int32_t> pids) {
  look(cards, pids, [](const Process&) { return true; });
}

void DrmProcessMemory::lookAtNew(const std::vector<DrmCard>& cards,
                                 std::span<const std::int32_t> pids) {
  look(cards, pids, [](const Process& process) { return process.askedAt == 0; });
}

void DrmProcessMemory::look(const std::vector<DrmCard>& cards, std::span<const std::int32_t> pids,
                            bool (*isDue)(const Process&)) {
  std::vector<std::int32_t> wanted(pids.begin(), pids.end());
  std::ranges::sort(wanted);
  wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
  std::erase_if(processes_, [&](const Process& process) {
    return !std::ranges::binary_search(wanted, process.pid);
  });
  if (std::ranges::none_of(cards, [this](const DrmCard& card) { return isWanted(card); })) {
    return;
  }
  for (const std::int32_t pid : wanted) {
    if (std::ranges::find(processes_, pid, &Process::pid) == processes_.end()) {
      processes_.push_back({.pid = pid});
    }
  }
  std::ranges::stable_sort(processes_, {}, &Process::askedAt);

  std::size_t left = options_.mostDescriptors;
  for (Process& process : processes_) {
    if (!isDue(process)) continue;
    const std::size_t count = lookAt(process, cards);
    if (count >= left) break;
    left -= count;
  }
}

bool DrmProcessMemory::isWanted(const DrmCard& card) const {
  return card.computes && !card.sleeps && !withoutMemory_.contains(card.id);
}

/// How many descriptors were looked at.
std::size_t DrmProcessMemory::lookAt(Process& process, const std::vector<DrmCard>& cards) {
  const std::uint64_t now = processClock();
  process.askedAt = now;
  std::erase_if(process.clients, [&](const Client& client) {
    return std::ranges::none_of(
        cards, [&](const DrmCard& card) { return card.id == client.card && card.sleeps; });
  });
  FileDescriptor folder = proc_.open(process.pid, "fd");
  const FileDescriptor details = proc_.open(process.pid, "fdinfo");
  const int descriptors = folder.get();
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(fdopendir(descriptors), closedir);
  if (!entries || !details.isOpen()) return 0;
  folder.release();

  std::size_t count = 0;
  while (const dirent* entry = readdir(entries.get())) {
    if (entry->d_name[0] == '.') continue;
    if (++count > options_.mostDescriptorsOfAProcess) break;
    const auto node = options_.deviceOf(descriptors, entry->d_name);
    if (!node || (node->majorNumber != kDrmMajor && node->majorNumber != kAccelMajor)) continue;
    const DrmCard* const card = cardOf(cards, *node);
    if (card == nullptr || !isWanted(*card)) continue;

    const FileDescriptor file(
        openat(details.get(), entry->d_name, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    const auto bytes = file.isOpen() ? reader_.read(file.get()) : std::nullopt;
    if (!bytes) continue;
    const auto client = drmClient(*bytes);
    if (client && client->cardBytes) {
      process.clients.push_back({card->id, client->id, *client->cardBytes, now});
    } else if (!card->capacity) {
      withoutMemory_.insert(card->id);
    }
  }
  return count;
}

std::vector<GpuUse> DrmProcessMemory::uses(const std::vector<DrmCard>& cards) const {
  std::vector<const Process*> byPid;
  byPid.reserve(processes_.size());
  for (const Process& process : processes_) byPid.push_back(&process);
  std::ranges::sort(byPid, {}, &Process::pid);

  std::vector<GpuUse> uses;
  std::set<std::pair<std::string_view, std::uint64_t>> counted;
  for (const Process* process : byPid) {
    std::map<std::size_t, GpuUse> ofProcess;
    for (const Client& client : process->clients) {
      const auto card = std::ranges::find(cards, client.card, &DrmCard::id);
      if (card == cards.end() || client.bytes == 0) continue;
      if (client.id && !counted.emplace(client.card, *client.id).second) continue;
      const auto place = static_cast<std::size_t>(card - cards.begin());
      GpuUse& use = ofProcess.try_emplace(place, GpuUse{process->pid, place, 0, client.askedAt})
                        .first->second;
      use.bytes += std::min(client.bytes, ~std::uint64_t{0} - use.bytes);
      use.askedAt = std::min(use.askedAt, client.askedAt);
    }
    for (const auto& [place, use] : ofProcess) uses.push_back(use);
  }
  return uses;
}

}  // namespace platform
