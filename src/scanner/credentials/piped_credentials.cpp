#include "scanner/credentials/piped_credentials.h"

#include <algorithm>
#include <array>

#include "scanner/credentials/credential_name.h"
#include "scanner/credentials/looks_secret.h"
#include "scanner/credentials/program_rule_follower.h"
#include "scanner/credentials/program_rules.h"
#include "text/contains.h"
#include "text/path.h"

namespace credentials {
namespace {

/// What is piped is short.
constexpr std::size_t kMostWords = 64;

/// Options that have a password read from what is piped in.
bool asksForInput(std::string_view word) {
  return word == "-S" || word == "-kS" || word == "-Sk" || text::contains(word, "stdin") ||
         text::contains(word, "passphrase-fd") || text::contains(word, "with-token") ||
         text::contains(word, "password-stdin");
}

bool writes(std::string_view name) {
  return name == "echo" || name == "printf";
}

bool endsInName(std::string_view word, std::string_view name) {
  return text::lastPathComponent(word) == name;
}

}  // namespace

void PipedCredentials::begin(std::string_view text, std::size_t argument) {
  text_ = text;
  argument_ = argument;
  command_.clear();
  written_.clear();
  isGroup_ = false;
  hasHereString_ = false;
  asksForPassword_ = std::nullopt;
}

void PipedCredentials::take(const Word& word) {
  if (word.beginsCommand) endCommand();
  if (command_.size() < kMostWords) command_.push_back(word);
  hasHereString_ = hasHereString_ || word.isHereString;
}

/// "echo V | sudo -S command", "(echo V; echo V) | passwd", "chpasswd <<< user:V"
void PipedCredentials::endCommand() {
  if (command_.empty()) return;
  if (writes(command_[0].text)) {
    const std::size_t begin = command_[0].begin;
    const bool opensGroup = begin > 0 && (text_[begin - 1] == '(' || text_[begin - 1] == '{');
    if (opensGroup || !isGroup_ || written_.size() > kMostWords) written_.clear();
    isGroup_ = isGroup_ || opensGroup;
    written_.insert(written_.end(), command_.begin() + 1, command_.end());
    command_.clear();
    return;
  }
  // Whether it reads a password is asked of few.
  const bool hasInput = hasHereString_ || (command_[0].isBehindPipe && !written_.empty());
  if (hasInput) takeInput();
  if (command_[0].text == "send" && asksForPassword()) addSent(command_.back());
  written_.clear();
  isGroup_ = false;
  hasHereString_ = false;
  command_.clear();
}

void PipedCredentials::takeInput() {
  const bool reads = readsPassword();
  const bool isPair = endsInName(command_[0].text, "chpasswd");
  if (reads && command_[0].isBehindPipe) {
    for (const Word& word : written_) addPiped(word, isPair);
  }
  if (!reads && !readsIntoCredential()) return;
  for (const Word& word : command_) {
    if (word.isHereString) addPiped(word, isPair);
  }
}

/// "read -s PASS"
bool PipedCredentials::readsIntoCredential() const {
  return command_[0].text == "read" &&
         std::any_of(command_.begin() + 1, command_.end(), [](const Word& word) {
           const NameKind kind = kindOf(word.text);
           return !word.isHereString && (kind == NameKind::password || kind == NameKind::token);
         });
}

bool PipedCredentials::asksForPassword() {
  if (!asksForPassword_) {
    asksForPassword_ = text::contains(text_, "assword") || text::contains(text_, "assphrase");
  }
  return *asksForPassword_;
}

/// What a script of expect answers where it is asked for a password: "send V\r".
void PipedCredentials::addSent(Word word) {
  for (const std::string_view ending : {"\r", "\n"}) {
    if (word.text.ends_with(ending)) word.text.remove_suffix(ending.size());
  }
  if (const auto span = credentialIn(word.text, 0, Part::whole)) {
    found_.push_back({argument_, {word.begin + span->begin, word.begin + span->end}});
  }
}

/// "gh secret set NAME"
bool PipedCredentials::keepsSecret() const {
  constexpr std::array<std::string_view, 5> kFilters{"grep", "sed", "awk", "tee", "jq"};
  if (std::ranges::find(kFilters, command_[0].text) != kFilters.end()) {
    return false;
  }
  return std::any_of(command_.begin() + 1, command_.end(), [](const Word& word) {
    return word.text == "secret" || word.text == "secrets" || word.text == "set-password";
  });
}

bool PipedCredentials::readsPassword() const {
  if (keepsSecret()) return true;
  const auto isReaderAt = [&](std::size_t i) {
    return i < command_.size() && readsPipedPassword(text::lastPathComponent(command_[i].text));
  };
  return isReaderAt(0) || (command_[0].text == "sudo" && isReaderAt(1)) ||
         std::ranges::any_of(command_, [](const Word& word) { return asksForInput(word.text); });
}

void PipedCredentials::addPiped(const Word& word, bool isPair) {
  if (looksLikeOption(word.text) || word.text == "%s" || word.text == "%s\\n") return;
  const Part part = isPair || text::contains(word.text, ":") ? Part::behindColon : Part::whole;
  if (const auto span = credentialIn(word.text, 0, part)) {
    found_.push_back({argument_, {word.begin + span->begin, word.begin + span->end}});
  }
}

}  // namespace credentials
