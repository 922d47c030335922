#pragma once

#include <functional>
#include <memory>

#include "ui/front_end.h"

class QObject;

/// Work on one of Qt's timers, which belongs to `owner` and ends with it.
std::shared_ptr<ScheduledWork> scheduleWork(QObject& owner, double seconds, bool repeats,
                                            std::function<void()> work);
