#pragma once

#include <string_view>
#include <vector>

#include "scanner/text_span.h"

/// What a text with the name of a credential at its end says of the argument behind it.
enum class NextArgument {
  anything,
  value,        ///< the value of an option, unless it is an option itself
  headerValue,  ///< the value of a header, or the scheme before it
};

/// Appends the values in `text` that stand behind the name of a credential, in order: those
/// of options, variables, headers and fields. In an argument (`isArgument`) the value of a
/// name that it begins with is the whole rest; elsewhere a value ends at a blank or at its
/// closing quotation mark. Linear in the length of the text.
NextArgument appendNamedCredentials(std::string_view text, bool isArgument,
                                    std::vector<TextSpan>& found);
