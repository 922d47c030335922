#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <functional>

/// Runs the event loop until `done` is true; false when it has not become so in a minute.
inline bool eventually(const std::function<bool()>& done) {
  const QDeadlineTimer patience(60000);
  QEventLoop loop;
  while (!done()) {
    if (patience.hasExpired()) return false;
    loop.processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

/// Works off what is waiting, deletions too.
inline void settle() {
  QEventLoop loop;
  for (int i = 0; i < 3; ++i) {
    loop.processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}
