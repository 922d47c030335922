#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "scanner/credentials/credential_name.h"
#include "scanner/credentials/value_bounds.h"
#include "text/text_span.h"

namespace credentials {

/// How much of what stands behind a credential's name is its value, and whether that is a secret.
/// All places are offsets in the text. What takes something returns where the search for names
/// goes on.
class NamedValues {
 public:
  /// The values that are secrets are appended to `found`.
  NamedValues(std::string_view text, std::vector<TextSpan>& found)
      : text_(text), bounds_(text), found_(found) {}

  /// Takes the value that begins at `value` if it is a secret: a word, a quotation, a list, a pair
  /// of user and password. `reachesEnd`: a secret goes on to the end of the text, blanks included.
  /// Behind "{" fields follow, each with a name and a value of its own.
  std::size_t take(NameKind kind, std::size_t value, bool reachesEnd);

  /// Takes the text between two places if it is a secret.
  std::size_t addIf(NameKind kind, std::size_t begin, std::size_t end);

  /// Takes it in any case.
  std::size_t add(std::size_t begin, std::size_t end);

  /// The kind of the object that take() was called for and that holds the name which begins here:
  /// fields such as "value" have the kind of their object's name. None outside of objects.
  std::optional<NameKind> objectAround(std::size_t name) const;

 private:
  std::size_t takeAccount(std::size_t value, std::size_t begin, std::string_view word);
  std::size_t takeList(std::size_t open);
  std::size_t takePair(std::size_t open);
  std::size_t endOfSetting(std::size_t value) const;
  std::size_t enterObject(NameKind kind, std::size_t open);

  std::string_view text_;
  ValueBounds bounds_;
  std::vector<TextSpan>& found_;
  std::size_t objectEnd_ = 0;
  NameKind objectKind_ = NameKind::unknown;
};

}  // namespace credentials
