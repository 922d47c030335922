#pragma once

#include "ui/alert.h"

namespace terminal {

/// What "?" shows.
Alert keysAlert();

}  // namespace terminal
