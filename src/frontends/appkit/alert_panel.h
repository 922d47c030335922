#pragma once

#include "ui/alert.h"

/// Shows the alert as AppKit's own and waits for the answer: FrontEnd::runModal.
int runAlertPanel(const Alert& alert);
