#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "scanner/credentials/shell_words.h"
#include "text/text_span.h"

namespace credentials {

/// Finds what a text's commands write to a program that reads a password: "echo V | sudo -S
/// command", "(echo V; echo V) | passwd", "chpasswd <<< user:V", "send V" of expect.
class PipedCredentials {
 public:
  /// Appends what is a credential.
  explicit PipedCredentials(std::vector<ArgumentSpan>& found) : found_(found) {}

  /// Another text, which is this argument.
  void begin(std::string_view text, std::size_t argument);

  /// Its next word.
  void take(const Word& word);

  /// It is over.
  void end() { endCommand(); }

 private:
  void endCommand();
  void takeInput();
  bool readsIntoCredential() const;
  bool asksForPassword();
  bool keepsSecret() const;
  bool readsPassword() const;
  void addSent(Word word);
  void addPiped(const Word& word, bool isPair);

  std::vector<ArgumentSpan>& found_;
  std::string_view text_;
  std::size_t argument_ = 0;
  std::vector<Word> command_;  // this one, as far as it has been read
  std::vector<Word> written_;  // what is echoed before this command
  bool isGroup_ = false;       // "(echo a; echo b)"
  bool hasHereString_ = false;
  std::optional<bool> asksForPassword_;  // a script: once it has been looked for
};

}  // namespace credentials
