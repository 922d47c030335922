#pragma once

#include <functional>
#include <memory>

#include "ui/front_end.h"

/// Runs `work` every `seconds` on the main run loop in all its modes: also while a menu or an
/// alert is open. macOS may let it wait: a tenth of the time, and up to a minute while nothing of
/// the program is on screen.
std::shared_ptr<ScheduledWork> repeatOnMainRunLoop(double seconds, std::function<void()> work);

/// Runs `work` once on the main queue, `seconds` from now. Until then macOS does not nap the
/// program, so the time holds.
std::shared_ptr<ScheduledWork> runOnMainQueue(double seconds, std::function<void()> work);
