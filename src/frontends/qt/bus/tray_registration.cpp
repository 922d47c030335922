#include "frontends/qt/bus/tray_registration.h"

#include <algorithm>

TrayRegistration::TrayRegistration(const TrayHostTimes& times, const std::function<void()>& look)
    : times_(times), pause_(times.firstPause) {
  for (QTimer* timer : {&patience_, &again_}) timer->setSingleShot(true);
  QObject::connect(&patience_, &QTimer::timeout, &patience_, [this, look] {
    if (missing_ == Missing::forAMoment) missing_ = Missing::forTooLong;
    look();
  });
  QObject::connect(&again_, &QTimer::timeout, &again_, [this, look] {
    registered_ = false;
    look();
  });
}

void TrayRegistration::forget() {
  registered_ = false;
  listed_ = false;
  missing_ = Missing::no;
  pause_ = times_.firstPause;
  patience_.stop();
  again_.stop();
}

void TrayRegistration::accepted() {
  registered_ = true;
  // The watcher may list the icon a little later: allow it the usual time.
  missFromNowOn();
}

void TrayRegistration::refused() {
  registered_ = false;
  registerAgainLater();
}

void TrayRegistration::listed() {
  if (!listed_) sinceListed_.start();
  listed_ = true;
  missing_ = Missing::no;
  again_.stop();
}

void TrayRegistration::missing() {
  if (listed_ && sinceListed_.elapsed() >= times_.longestPause) pause_ = times_.firstPause;
  listed_ = false;
  missFromNowOn();
  registerAgainLater();
}

void TrayRegistration::missFromNowOn() {
  if (missing_ != Missing::no) return;
  missing_ = Missing::forAMoment;
  patience_.start(times_.patience);
}

void TrayRegistration::registerAgainLater() {
  if (again_.isActive()) return;
  again_.start(pause_);
  pause_ = std::min(2 * pause_, times_.longestPause);
}
