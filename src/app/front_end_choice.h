#pragma once

#include "app/surroundings.h"

/// Which front end the program shows when no option asks for one: it depends on where the program
/// was started.
enum class FrontEndKind {
  text,      ///< the menu once, as plain text
  terminal,  ///< the full-screen menu in a terminal
  tray,      ///< the icon on a desktop
};

/// A pipe gets text, whatever display there is; a terminal over ssh, or one without a display, the
/// full-screen menu; else a display gets the tray, and a log text.
FrontEndKind chooseFrontEnd(const Surroundings& surroundings);
