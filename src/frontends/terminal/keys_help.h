#pragma once

#include "ui/alerts.h"

namespace terminal {

/// What "?" shows.
Alert keysAlert();

}  // namespace terminal
