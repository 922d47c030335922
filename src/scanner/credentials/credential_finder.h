#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "scanner/text_span.h"

/// Finds the values of credentials in what a process was started with. All searches are
/// linear in the length of the text, allocate nothing when there is nothing to find, and
/// give spans in order that neither overlap nor touch.
namespace CredentialFinder {

/// Whether a text is worth a search: false says that it holds no credential. Cheap.
bool mayHoldCredential(std::string_view text);

/// What was found in one argument of a vector.
struct InArgument {
  std::size_t argument = 0;     ///< index in the vector
  std::vector<TextSpan> spans;  ///< of the values; at least one
};

/// In an argument vector; arguments without a credential are left out. A value is one whole
/// argument, or the whole rest of one
/// ("--password=…", "PASSWORD=…"), blanks included; inside an argument that holds a command
/// or a text of its own, a value ends as in a line.
std::vector<InArgument> inArguments(std::span<const std::string_view> arguments);

/// In a line whose arguments are no longer told apart: a value ends at a blank or, when it
/// begins with a quotation mark, at the next one of its kind.
std::vector<TextSpan> inLine(std::string_view line);

}  // namespace CredentialFinder
