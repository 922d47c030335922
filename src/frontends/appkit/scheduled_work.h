#pragma once

#include <functional>
#include <memory>

#include "ui/front_end.h"

/// Runs `work` every `seconds` on the main run loop in all its modes: also while a menu or an
/// alert is open.
std::shared_ptr<ScheduledWork> repeatOnMainRunLoop(double seconds, std::function<void()> work);

/// Runs `work` once on the main queue, `seconds` from now.
std::shared_ptr<ScheduledWork> runOnMainQueue(double seconds, std::function<void()> work);
