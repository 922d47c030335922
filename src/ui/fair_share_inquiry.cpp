#include "ui/fair_share_inquiry.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/processes.h"
#include "scanner/memory_units.h"

namespace {

// In seconds. Most shares are there at the first look; what takes long is looked for less often.
constexpr double kFirstLook = 0.02;
constexpr double kLongestWait = 1;

}  // namespace

void FairShareInquiry::ask(std::vector<ProcessReference> processes, Tell tell) {
  forget();
  if (processes.empty()) return;
  std::vector<std::int32_t> pids;
  pids.reserve(processes.size());
  for (const ProcessReference& process : processes) pids.push_back(process.pid);
  question_ = platform::askFairShares(pids);
  if (question_ == nullptr) return;
  processes_ = std::move(processes);
  tell_ = std::move(tell);
  lookIn(kFirstLook);
}

void FairShareInquiry::forget() {
  if (nextLook_) nextLook_->cancel();
  nextLook_.reset();
  question_.reset();
}

void FairShareInquiry::lookIn(double seconds) {
  nextLook_ = frontEnd_.after(seconds, [this, seconds] { look(seconds); });
}

void FairShareInquiry::look(double waited) {
  const auto answer = question_->answer();
  if (!answer) return lookIn(std::min(2 * waited, kLongestWait));
  question_.reset();
  nextLook_.reset();
  Shares shares;
  for (std::size_t i = 0; i < processes_.size(); ++i) {
    const auto& [pid, identity] = processes_[i];
    // If the pid still belongs to that process now, it did while its share was read.
    const bool isKnown = (*answer)[i] && identity && platform::processIdentity(pid) == identity;
    shares.push_back(isKnown ? std::optional(static_cast<double>(*(*answer)[i]) / kBytesPerMB)
                             : std::nullopt);
  }
  const Tell tell = std::move(tell_);  // it may ask anew
  tell(shares);
}
