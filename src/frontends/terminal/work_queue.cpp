#include "frontends/terminal/work_queue.h"

#include <algorithm>
#include <utility>

namespace terminal {

struct WorkQueue::Work : ScheduledWork {
  Work(double dueAt, double repeatEvery, std::function<void()> body)
      : due(dueAt),
        interval(repeatEvery),
        run(std::make_shared<const std::function<void()>>(std::move(body))) {}
  void cancel() override { run.reset(); }

  double due;
  double interval;
  // Null: cancelled. Shared, so that who runs it needs no copy when it is cancelled meanwhile.
  std::shared_ptr<const std::function<void()>> run;
};

std::shared_ptr<ScheduledWork> WorkQueue::add(double due, double interval,
                                              std::function<void()> work) {
  return work_.emplace_back(std::make_shared<Work>(due, interval, std::move(work)));
}

std::optional<double> WorkQueue::nextDue() const {
  std::optional<double> next;
  for (const auto& work : work_) {
    if (work->run && (!next || work->due < *next)) next = work->due;
  }
  return next;
}

void WorkQueue::run(double now) {
  for (;;) {
    std::erase_if(work_, [](const auto& work) { return !work->run; });
    const auto next =
        std::ranges::min_element(work_, {}, [](const auto& work) { return work->due; });
    if (next == work_.end() || (*next)->due > now) return;

    const std::shared_ptr<Work> work = *next;  // the list changes while it runs
    const auto body = work->run;
    if (work->interval > 0) {
      work->due += work->interval;
      if (work->due <= now) work->due = now + work->interval;
    } else {
      work_.erase(next);
    }
    (*body)();
  }
}

}  // namespace terminal
