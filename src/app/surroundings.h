#pragma once

/// Where the program was started.
struct Surroundings {
  bool onTerminal = false;  ///< standard input and output are a terminal
  bool overSsh = false;     ///< the terminal is on another machine
  bool intoPipe = false;    ///< standard output is a pipe
  bool hasDisplay = false;  ///< there is an X11 or Wayland display to show a window on
};

/// Asks the system where this program was started: the standard streams, and the variables that ssh
/// and desktops set.
Surroundings lookAround();
