#pragma once

#include "ui/alerts.h"

/// Shows the alert as an NSAlert and waits for the answer: see FrontEnd::runModal.
int runAlertPanel(const Alert& alert);
