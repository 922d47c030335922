#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "scanner/text_span.h"

/// Finds the values of credentials in what a process was started with. All searches are
/// linear in the length of the text and give spans in order that neither overlap nor touch.
namespace credentials {

/// What was found in one argument of a vector.
struct InArgument {
  std::size_t argument = 0;     ///< index in the vector
  std::vector<TextSpan> spans;  ///< of the values; at least one
};

/// What was found in an argument vector.
struct InArguments {
  std::vector<InArgument> found;  ///< arguments without a credential are left out
  /// Arguments from this one on were not searched, and are to be masked whole: nobody needs
  /// so many but who wants the search to take long.
  std::size_t searched = 0;
};

/// In an argument vector. A value is one whole argument, or the whole rest of one
/// ("--password=…", "PASSWORD=…"), blanks included; inside an argument that holds a command or
/// a text of its own, a value ends as in a line.
InArguments findInArguments(std::span<const std::string_view> arguments);

/// In a line whose arguments are no longer told apart: a value ends at a blank or, when it
/// begins with a quotation mark, at the next one of its kind.
std::vector<TextSpan> findInLine(std::string_view line);

}  // namespace credentials
