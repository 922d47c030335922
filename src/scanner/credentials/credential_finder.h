#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "text/text_span.h"

/// Finds the values of credentials in what a process was started with. All searches are linear in
/// the length of the text. The spans they return are in order, and neither overlap nor touch.
namespace credentials {

/// What was found in one argument of a vector.
struct InArgument {
  std::size_t argument = 0;     ///< index in the vector
  std::vector<TextSpan> spans;  ///< the values in it; at least one
};

/// What was found in an argument vector.
struct InArguments {
  std::vector<InArgument> found;  ///< arguments without a credential are left out
  /// Arguments from this one on were not searched and have to be masked whole. Only somebody who
  /// wants to slow the search down passes so many.
  std::size_t searched = 0;
};

/// Searches an argument vector. A value is one whole argument, or the whole rest of one
/// ("--password=…", "PASSWORD=…"), blanks included; inside an argument that itself holds a command
/// or a text, a value ends as in findInLine.
InArguments findInArguments(std::span<const std::string_view> arguments);

/// Searches a line in which the arguments can't be told apart any more: a value ends at a blank
/// or, when it begins with a quotation mark, at the next one of its kind.
std::vector<TextSpan> findInLine(std::string_view line);

}  // namespace credentials
