#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "scanner/credentials/credential_name.h"
#include "text/text_span.h"

namespace credentials {

/// What an argument tells about the next one: that its value follows there.
struct Announcement {
  enum class Form {
    nothing,
    value,       ///< of an option: "--token"
    headerValue  ///< of a header: "Authorization:"
  };
  Form form = Form::nothing;
  std::string_view name;  ///< the name that the value belongs to
};

/// How many names are looked at in the arguments of one process. Everything after the last of them
/// is masked without a search: only somebody who wants to slow the search down passes so many.
constexpr int kMostNames = 2000;

/// Appends, in order, the values in `text` that are named like a credential: those of options,
/// variables, headers, fields of JSON, YAML and TOML, settings of connection strings.
/// `isArgument`: the text is one whole argument, so a value may reach to its end. `namesLeft` is
/// reduced by the names that were looked at. Linear in the length of the text.
Announcement appendNamedCredentials(std::string_view text, bool isArgument, int& namesLeft,
                                    std::vector<TextSpan>& found);

}  // namespace credentials
