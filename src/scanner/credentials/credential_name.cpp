#include "scanner/credentials/credential_name.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "scanner/credentials/credential_name_table.h"
#include "scanner/credentials/trie.h"
#include "scanner/credentials/value_bounds.h"
#include "scanner/credentials/word_set.h"
#include "text/ascii.h"

namespace credentials {
namespace {

using namespace std::string_view_literals;

/// Last words that do not change what the words before them mean: "TOKEN_VALUE",
/// "password-confirm".
const WordSet& neutralWords() {
  static const WordSet words(std::array{
      "b64"sv,        "base"sv,    "base64"sv,    "confirm"sv,   "confirmation"sv, "content"sv,
      "current"sv,    "data"sv,    "decoded"sv,   "default"sv,   "dev"sv,          "encoded"sv,
      "header"sv,     "hex"sv,     "literal"sv,   "live"sv,      "local"sv,        "main"sv,
      "new"sv,        "old"sv,     "plain"sv,     "plaintext"sv, "primary"sv,      "prod"sv,
      "production"sv, "raw"sv,     "read"sv,      "readonly"sv,  "repeat"sv,       "ro"sv,
      "rw"sv,         "sandbox"sv, "secondary"sv, "staging"sv,   "str"sv,          "string"sv,
      "test"sv,       "val"sv,     "value"sv,     "values"sv,    "verify"sv,       "write"sv});
  return words;
}

/// First words of options that are switches.
const WordSet& switches() {
  static const WordSet words(std::array{"ask"sv, "check"sv, "disable"sv, "enable"sv, "generate"sv,
                                        "hide"sv, "insecure"sv, "no"sv, "print"sv, "prompt"sv,
                                        "require"sv, "reset"sv, "save"sv, "show"sv, "skip"sv,
                                        "verify"sv, "with"sv, "without"sv});
  return words;
}

bool isSeparator(char c) {
  return !text::isAlphanumeric(c);
}

/// Whether a word begins at `name[at]`: behind a separator or a digit, or where the case
/// changes ("api|Key", "API|Key").
bool beginsWord(std::string_view name, std::size_t at) {
  if (at == 0 || isSeparator(name[at - 1]) || text::isDigit(name[at - 1])) return true;
  if (!text::isUpper(name[at])) return false;
  return text::isLower(name[at - 1]) || (at + 1 < name.size() && text::isLower(name[at + 1]));
}

/// The endings, reversed, because names are read from their end.
const Trie& endings() {
  static const Trie tree = [] {
    std::vector<std::string> reversed;
    for (const Ending& ending : kEndings) {
      reversed.emplace_back(ending.text.rbegin(), ending.text.rend());
    }
    return Trie({reversed.begin(), reversed.end()});
  }();
  return tree;
}

/// The kind that belongs to the longest known ending of the name, or unknown.
NameKind kindByEnding(std::string_view name) {
  const Trie& tree = endings();
  NameKind kind = NameKind::unknown;
  Trie::Node node = Trie::kRoot;
  for (std::size_t at = name.size(); at > 0; --at) {
    if (isSeparator(name[at - 1])) continue;
    node = tree.next(node, text::asciiLower(name[at - 1]));
    if (node == Trie::kNowhere) break;
    const int found = tree.keyAt(node);
    if (found == Trie::kNoKey) continue;
    const Ending& ending = kEndings[static_cast<std::size_t>(found)];
    if (!ending.isWord || beginsWord(name, at - 1)) {
      kind = ending.kind;
    } else if (ending.text == "key") {
      kind = NameKind::unclear;  // the ending of a word that is not known
    }
  }
  return kind;
}

/// Takes the last word off the name.
std::string_view takeLastWord(std::string_view& name) {
  while (!name.empty() && isSeparator(name.back())) name.remove_suffix(1);
  std::size_t begin = name.size();
  while (begin > 0 && !isSeparator(name[begin - 1])) {
    --begin;
    if (beginsWord(name, begin) && text::isLetter(name[begin])) break;
  }
  const std::string_view word = name.substr(begin);
  name = name.substr(0, begin);
  return word;
}

bool isKeyAlone(std::string_view name) {
  while (!name.empty() && isSeparator(name.front())) name.remove_prefix(1);
  while (!name.empty() && isSeparator(name.back())) name.remove_suffix(1);
  return text::equalsLowered(name, "key");
}

std::string_view withoutNumber(std::string_view name) {
  while (!name.empty() && (text::isDigit(name.back()) || isSeparator(name.back()))) {
    name.remove_suffix(1);
  }
  return name;
}

using PairRow = std::array<bool, 32>;

/// Pairs of letters. Nearly every word for a credential has one of them and most names have none,
/// so most names need no closer look.
constexpr auto kTellingPairs = [] {
  std::array<PairRow, 32> pairs{};
  for (const std::string_view pair :
       {"ke"sv, "pa"sv, "pw"sv, "wd"sv, "cr"sv, "au"sv, "jw"sv, "oo"sv, "sk"sv, "ss"sv}) {
    pairs[pair[0] & 31][pair[1] & 31] = true;
  }
  return pairs;
}();

bool holdsTellingPair(std::string_view name) {
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (kTellingPairs[name[i - 1] & 31][name[i] & 31]) return true;
  }
  return false;
}

/// Whether the name that begins here is where a setting's name would be, and not inside a program's
/// source text.
bool isSettingsName(std::string_view text, std::size_t begin) {
  return begin == 0 || text[begin] == '-' || text[begin - 1] == '?' || text[begin - 1] == '&' ||
         isQuote(text[begin - 1]);
}

/// Field names that hold the secret itself, inside an object that is named like a credential.
bool isNeutral(std::string_view name) {
  constexpr std::array kNeutral{"value"sv,   "data"sv, "content"sv, "plain"sv, "default"sv,
                                "current"sv, "text"sv, "string"sv,  "raw"sv};
  return std::ranges::find(kNeutral, name) != kNeutral.end();
}

}  // namespace

NameKind kindOf(std::string_view name) {
  constexpr std::size_t kLongestName = 80;
  constexpr int kMostWords = 3;
  if (name.size() > kLongestName) name.remove_prefix(name.size() - kLongestName);
  if (isKeyAlone(name)) return NameKind::anyKey;
  NameKind kind = kindByEnding(name);
  if (kind != NameKind::unknown) return kind;
  if (!holdsTellingPair(name)) return NameKind::unknown;
  name = withoutNumber(name);
  // Further words that are not known may change what the word for a credential means.
  bool isSure = true;
  for (int word = 0; word < kMostWords && !name.empty(); ++word) {
    kind = kindByEnding(name);
    if (kind == NameKind::harmless) return isSure ? kind : NameKind::unknown;
    if (kind != NameKind::unknown) return isSure ? kind : NameKind::unclear;
    isSure = neutralWords().holds(takeLastWord(name)) && isSure;
  }
  return NameKind::unknown;
}

bool isSwitch(std::string_view name) {
  while (!name.empty() && isSeparator(name.front())) name.remove_prefix(1);
  const auto end = std::ranges::find_if(name, isSeparator);
  return switches().holds(name.substr(0, static_cast<std::size_t>(end - name.begin())));
}

NameKind kindIn(std::string_view text, std::size_t begin, std::size_t end,
                std::optional<NameKind> object) {
  const std::string_view name = text.substr(begin, end - begin);
  const char value = end + 1 < text.size() ? text[end + 1] : '\0';
  // PWD and OLDPWD, the shell's folders.
  if (name.ends_with("PWD") && (value == '/' || value == '~')) return NameKind::harmless;
  NameKind kind = kindOf(name);
  if (kind == NameKind::anyKey && !isSettingsName(text, begin)) kind = NameKind::key;
  if (object && !isStrong(kind) && isNeutral(name)) return *object;
  // "-object secret,id=…,data=…"
  if (kind == NameKind::unknown && name == "data" && text.starts_with("secret,")) {
    return NameKind::token;
  }
  return kind;
}

}  // namespace credentials
