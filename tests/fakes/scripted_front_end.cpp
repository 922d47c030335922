#include "fakes/scripted_front_end.h"

#include <algorithm>
#include <utility>

struct ScriptedFrontEnd::Work : ScheduledWork {
  Work(double dueAt, double repeatEvery, std::function<void()> body)
      : due(dueAt), interval(repeatEvery), run(std::move(body)) {}
  void cancel() override { cancelled = true; }

  double due;
  double interval;  // 0: once
  std::function<void()> run;
  bool cancelled = false;
};

std::shared_ptr<ScheduledWork> ScriptedFrontEnd::every(double seconds, std::function<void()> work) {
  return work_.emplace_back(std::make_shared<Work>(now_ + seconds, seconds, std::move(work)));
}

std::shared_ptr<ScheduledWork> ScriptedFrontEnd::after(double seconds, std::function<void()> work) {
  return work_.emplace_back(std::make_shared<Work>(now_ + seconds, 0, std::move(work)));
}

void ScriptedFrontEnd::advance(double seconds) {
  const double end = now_ + seconds;
  for (;;) {
    std::erase_if(work_, [](const auto& work) { return work->cancelled; });
    const auto next = std::min_element(
        work_.begin(), work_.end(), [](const auto& a, const auto& b) { return a->due < b->due; });
    if (next == work_.end() || (*next)->due > end) break;
    const std::shared_ptr<Work> work = *next;
    now_ = work->due;
    work->due += work->interval;
    if (work->interval == 0) work_.erase(next);
    work->run();
  }
  now_ = end;
}

std::size_t ScriptedFrontEnd::pendingWork() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(work_, [](const auto& work) { return !work->cancelled; }));
}

void ScriptedFrontEnd::cancelTracking() {
  ++trackingsCancelled;
  if (whenTrackingIsCancelled) whenTrackingIsCancelled();
}

void ScriptedFrontEnd::alertChanged(const Alert& alert) {
  ++alertChanges;
  alerts.back() = alert;
}

int ScriptedFrontEnd::runModal(const Alert& alert) {
  alerts.push_back(alert);
  if (whileAlertIsOpen) whileAlertIsOpen(alert);
  if (answers.empty()) return kAlertFirstButtonReturn;
  const int answer = answers.front();
  answers.pop_front();
  return answer;
}
