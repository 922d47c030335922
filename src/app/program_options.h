#pragma once

#include <span>
#include <string>

/// What the program's options ask for.
enum class Output {
  menu,        ///< no option: the menu, in the form that suits the surroundings
  help,        ///< what options there are
  version,     ///< the program's version
  text,        ///< the menu once, as plain text
  json,        ///< all that was found out, once, for programs
  bar,         ///< a line for a status bar, once
  watchedBar,  ///< the same, again and again
};

/// What was asked for, or why that can't be done.
struct ProgramOptions {
  Output output = Output::menu;  ///< what to show
  std::string problem;           ///< why the options make no sense, in one line; "" when they do
};

/// Reads the program's arguments, without its own name. Options are not abbreviated and may not be
/// joined, but for "--watch", which goes with "--bar" alone.
ProgramOptions programOptions(std::span<const char* const> arguments);

/// What "--help" prints.
std::string helpText();

/// What "--version" prints: "vorda 1.2.3".
std::string versionText();
