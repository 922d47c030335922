#include "macos/appkit/record.h"

#include <dispatch/dispatch.h>

#include <algorithm>

#include "macos/appkit/registry.h"

namespace appkit {
namespace {

struct Waiting {
  dispatch_time_t due;
  void* context;
  dispatch_function_t work;
};

dispatch_time_t now = 1;
std::vector<Waiting> mainQueue;

}  // namespace

Record& record() {
  static Record theRecord;
  return theRecord;
}

void reset() {
  watchTimers();
  advanceMainQueue(1e6);
  forgetTimers();
  const Record before = record();
  record() = {};
  record().statusItems = before.statusItems;
  record().views = before.views;
  record().activities = before.activities;
  record().menuItems = before.menuItems;
}

void advanceMainQueue(double seconds) {
  // As libdispatch: work of the main queue waits for the work that is running, even if that waits
  // for an alert.
  static bool isRunning = false;
  if (isRunning) return;
  const dispatch_time_t end = now + static_cast<dispatch_time_t>(seconds * 1e9);
  for (;;) {
    const auto next = std::min_element(mainQueue.begin(), mainQueue.end(),
                                       [](const auto& a, const auto& b) { return a.due < b.due; });
    if (next == mainQueue.end() || next->due > end) break;
    const Waiting work = *next;
    mainQueue.erase(next);
    now = std::max(now, work.due);
    isRunning = true;
    work.work(work.context);
    isRunning = false;
  }
  now = end;
}

std::size_t waitingOnMainQueue() {
  return mainQueue.size();
}

}  // namespace appkit

extern "C" {

dispatch_queue_main_s theMainQueue;

dispatch_queue_main_t dispatch_get_main_queue(void) {
  return &theMainQueue;
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
  return (when == DISPATCH_TIME_NOW ? appkit::now : when) + static_cast<dispatch_time_t>(delta);
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work) {
  if (queue == &theMainQueue) appkit::mainQueue.push_back({when, context, work});
}
}
