#include "frontends/qt/qt_scheduled_work.h"

#include <QPointer>
#include <QTimer>
#include <cmath>
#include <utility>

namespace {

class TimerWork : public ScheduledWork {
 public:
  explicit TimerWork(QTimer* timer) : timer_(timer) {}

  void cancel() override {
    if (!timer_) return;
    timer_->stop();
    timer_->deleteLater();
  }

 private:
  QPointer<QTimer> timer_;
};

}  // namespace

std::shared_ptr<ScheduledWork> scheduleWork(QObject& owner, double seconds, bool repeats,
                                            std::function<void()> work) {
  auto* timer = new QTimer(&owner);
  timer->setSingleShot(!repeats);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, repeats, work = std::move(work)] {
    if (!repeats) timer->deleteLater();
    work();
  });
  timer->start(static_cast<int>(std::lround(seconds * 1000)));
  return std::make_shared<TimerWork>(timer);
}
