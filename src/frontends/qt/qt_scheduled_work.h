#pragma once

#include <functional>
#include <memory>

#include "ui/front_end.h"

class QObject;

/// Runs work on a QTimer that belongs to `owner` and ends with it.
std::shared_ptr<ScheduledWork> scheduleWork(QObject& owner, double seconds, bool repeats,
                                            std::function<void()> work);
