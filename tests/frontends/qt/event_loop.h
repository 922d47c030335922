#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <functional>

#include "tools/eventually.h"

/// Runs the event loop until `done` is true; false when it has not become so in a minute.
inline bool eventually(const std::function<bool()>& done) {
  QEventLoop loop;
  return eventually(done, [&loop] { loop.processEvents(QEventLoop::AllEvents, 20); });
}

/// Works off what is waiting, deletions too.
inline void settle() {
  QEventLoop loop;
  for (int i = 0; i < 3; ++i) {
    loop.processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}
