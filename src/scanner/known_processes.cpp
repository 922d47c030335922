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
    if (Entry* const entry = find(row.pid)) entry->process.row.takeBack(std::move(row));
  }
  rows.clear();
}

KnownProcess& KnownProcesses::of(std::int32_t pid) {
  Entry* entry =
      next_ < known_.size() && known_[next_].process.pid == pid ? &known_[next_] : find(pid);
  if (entry == nullptr) {
    entry = &born_.emplace_back();
    entry->process.pid = pid;
  } else {
    next_ = static_cast<std::size_t>(entry - known_.data()) + 1;
  }
  entry->isThere = true;
  return entry->process;
}

void KnownProcesses::end() {
  std::erase_if(known_, [](const Entry& entry) { return !entry.isThere; });
  if (!born_.empty()) {
    known_.insert(known_.end(), std::make_move_iterator(born_.begin()),
                  std::make_move_iterator(born_.end()));
    born_.clear();
    born_.shrink_to_fit();
    std::ranges::sort(known_, {}, [](const Entry& entry) { return entry.process.pid; });
  }
  for (Entry& entry : known_) entry.isThere = false;
}

KnownProcesses::Entry* KnownProcesses::find(std::int32_t pid) {
  const auto place = std::ranges::lower_bound(known_, pid, {},
                                              [](const Entry& entry) { return entry.process.pid; });
  return place != known_.end() && place->process.pid == pid ? &*place : nullptr;
}

}  // namespace ProcessScanner
