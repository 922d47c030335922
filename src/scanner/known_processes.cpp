#include "scanner/known_processes.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ProcessScanner {

void LentRow::make(VordaProcess row) {
  row_ = std::make_unique<VordaProcess>(std::move(row));
}

VordaProcess LentRow::lend() {
  VordaProcess row = std::move(*row_);
  row_->pid = kLent;
  return row;
}

void LentRow::takeBack(VordaProcess&& row) {
  if (row_ != nullptr) *row_ = std::move(row);
}

void KnownProcesses::begin(std::vector<VordaProcess>& rows) {
  giveBack(rows);
  next_ = 0;
}

void KnownProcesses::giveBack(std::vector<VordaProcess>& rows) {
  for (VordaProcess& row : rows) {
    if (KnownProcess* const process = known(row.pid)) process->row.takeBack(std::move(row));
  }
  rows.clear();
}

KnownProcess& KnownProcesses::of(std::int32_t pid) {
  KnownProcess* process =
      next_ < known_.size() && known_[next_].pid == pid ? &known_[next_] : known(pid);
  if (process == nullptr) {
    process = &born_.emplace_back();
    process->pid = pid;
  } else {
    next_ = static_cast<std::size_t>(process - known_.data()) + 1;
  }
  process->isThere = true;
  return *process;
}

void KnownProcesses::end() {
  std::erase_if(known_, [](const KnownProcess& process) { return !process.isThere; });
  if (!born_.empty()) {
    known_.insert(known_.end(), std::make_move_iterator(born_.begin()),
                  std::make_move_iterator(born_.end()));
    born_.clear();
    born_.shrink_to_fit();
    std::ranges::sort(known_, {}, &KnownProcess::pid);
  }
  for (KnownProcess& process : known_) process.isThere = false;
}

KnownProcess* KnownProcesses::known(std::int32_t pid) {
  const auto place = std::ranges::lower_bound(known_, pid, {}, &KnownProcess::pid);
  return place != known_.end() && place->pid == pid ? &*place : nullptr;
}

}  // namespace ProcessScanner
