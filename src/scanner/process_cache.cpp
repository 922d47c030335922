#include "scanner/process_cache.h"

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

void ProcessCache::begin(std::vector<VordaProcess>& rows) {
  giveBack(rows);
  next_ = 0;
}

void ProcessCache::giveBack(std::vector<VordaProcess>& rows) {
  for (VordaProcess& row : rows) {
    if (CachedProcess* const process = find(row.pid)) process->row.takeBack(std::move(row));
  }
  rows.clear();
}

CachedProcess& ProcessCache::of(std::int32_t pid) {
  CachedProcess* process =
      next_ < cached_.size() && cached_[next_].pid == pid ? &cached_[next_] : find(pid);
  if (process == nullptr) {
    process = &new_.emplace_back();
    process->pid = pid;
  } else {
    next_ = static_cast<std::size_t>(process - cached_.data()) + 1;
  }
  process->isThere = true;
  return *process;
}

void ProcessCache::end() {
  std::erase_if(cached_, [](const CachedProcess& process) { return !process.isThere; });
  if (!new_.empty()) {
    cached_.insert(cached_.end(), std::make_move_iterator(new_.begin()),
                   std::make_move_iterator(new_.end()));
    new_.clear();
    new_.shrink_to_fit();
    std::ranges::sort(cached_, {}, &CachedProcess::pid);
  }
  for (CachedProcess& process : cached_) process.isThere = false;
}

CachedProcess* ProcessCache::find(std::int32_t pid) {
  const auto place = std::ranges::lower_bound(cached_, pid, {}, &CachedProcess::pid);
  return place != cached_.end() && place->pid == pid ? &*place : nullptr;
}

}  // namespace ProcessScanner
