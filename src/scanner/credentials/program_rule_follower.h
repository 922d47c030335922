#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "scanner/credentials/program_rules.h"
#include "scanner/credentials/shell_words.h"
#include "text/text_span.h"

namespace credentials {

/// The part of `word` from `begin` on that is the credential; none when there is none.
std::optional<TextSpan> credentialIn(std::string_view word, std::size_t begin, Part part);

/// A word and which argument it stands in.
struct PlacedWord {
  Word word;
  std::size_t argument = 0;
};

/// Follows one program's rules along its words.
class RuleFollower {
 public:
  /// Appends what is a credential by the rules.
  explicit RuleFollower(std::vector<ArgumentSpan>& found) : found_(found) {}

  /// A program begins.
  void begin(const Ways* ways);

  bool isFollowing() const { return ways_ != nullptr; }
  bool isLauncher() const { return ways_ != nullptr && ways_->isLauncher; }
  bool isContainer() const { return ways_ != nullptr && ways_->isContainer; }

  /// The next word of the program that was begun.
  void take(const PlacedWord& word);

  /// The program's words are over.
  void end();

 private:
  bool advance(const Rule& rule, std::size_t& at, const PlacedWord& word, bool isAnOption);
  bool takeOption(const Step& option, const PlacedWord& word);
  void takeUrl(const PlacedWord& word);
  void takeDsn(const PlacedWord& word);
  bool add(const PlacedWord& word, std::size_t begin, Part part);

  std::vector<ArgumentSpan>& found_;
  const Ways* ways_ = nullptr;
  std::vector<std::size_t> progress_;  // by rule: the step that comes next
  const Step* expected_ = nullptr;     // the option whose value comes next
  std::optional<PlacedWord> last_;
  bool hasBatchOption_ = false;
};

}  // namespace credentials
