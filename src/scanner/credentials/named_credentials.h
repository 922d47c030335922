#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "scanner/credentials/credential_name.h"
#include "scanner/text_span.h"

namespace credentials {

/// What one argument says of the next.
struct Announcement {
  enum class Form {
    nothing,
    value,       ///< of an option: "--token"
    headerValue  ///< of a header: "Authorization:"
  };
  Form form = Form::nothing;
  std::string_view name;  ///< of what the value belongs to
};

/// How many names one process may use up in its arguments. What comes behind the last of
/// them is masked rather than searched: only who wants the search to take long has so many.
constexpr int kMostNames = 2000;

/// Appends the values of what is named like a credential in `text`: options, variables, headers,
/// fields of JSON, YAML and TOML, settings of connection strings. In order. `isArgument`: the
/// text is one whole argument, so a value may reach to its end. `namesLeft` is counted down.
/// Linear in the length of the text.
Announcement appendNamedCredentials(std::string_view text, bool isArgument, int& namesLeft,
                                    std::vector<TextSpan>& found);

}  // namespace credentials
