#pragma once

#include <cstdio>
#include <string>

/// How printing ended.
enum class Printed {
  whole,       ///< all of it was written
  readerGone,  ///< nobody reads the pipe any more
  failed,      ///< it could not be written: a full disk, a closed output; errno says why
};

/// Prints the text and flushes it. A reader that is gone does not end the process by SIGPIPE
/// meanwhile.
[[nodiscard]] Printed print(const std::string& text, std::FILE* out);

/// Says in one line on standard error why `what` ("the menu") could not be printed just now, and
/// returns the program's exit status for that, 1.
[[nodiscard]] int sayNotPrinted(const char* what);

/// Prints, and where that is not whole says so; returns the program's exit status, 0 or 1.
[[nodiscard]] int printOrSay(const std::string& text, const char* what, std::FILE* out);
