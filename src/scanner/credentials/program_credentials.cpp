#include "scanner/credentials/program_credentials.h"

#include <algorithm>
#include <array>
#include <optional>

#include "scanner/credentials/credential_value.h"
#include "scanner/credentials/program_rules.h"
#include "scanner/credentials/shell_words.h"
#include "text/ascii.h"
#include "text/contains.h"
#include "text/path.h"

namespace credentials {
namespace {

constexpr auto npos = std::string_view::npos;

/// A word and where it stands.
struct PlacedWord {
  Word word;
  std::size_t argument = 0;
};

TextSpan withoutQuotes(std::string_view text, TextSpan span) {
  const auto isMark = [](char c) { return c == '"' || c == '\''; };
  if (span.end - span.begin >= 2 && isMark(text[span.begin])) {
    const char mark = text[span.begin];
    ++span.begin;
    if (text[span.end - 1] == mark) --span.end;
  }
  return span;
}

/// "8080:80", "127.0.0.1:80": a port rather than a password.
bool isPortMapping(std::string_view value) {
  return text::contains(value, ":") && std::ranges::all_of(value, [](char c) {
           return text::isDigit(c) || c == ':' || c == '.' || c == '-';
         });
}

/// Whether it may be a password, where it could also be a port, a path or a name.
bool mayBePassword(std::string_view value) {
  if (looksSecret(value) || looksLikeKey(value)) return true;
  constexpr std::size_t kShortest = 7;
  const auto isSpecial = [](char c) { return std::string_view("!#%^&*+?~").find(c) != npos; };
  const auto isAllowed = [&](char c) { return text::isAlphanumeric(c) || isSpecial(c); };
  return value.size() >= kShortest && std::ranges::all_of(value, isAllowed) &&
         std::ranges::any_of(value, text::isLetter) &&
         std::ranges::any_of(value, [&](char c) { return text::isDigit(c) || isSpecial(c); });
}

/// The part of `word` from `begin` on that is the credential; empty when there is none.
std::optional<TextSpan> credentialIn(std::string_view word, std::size_t begin, Part part) {
  TextSpan span = withoutQuotes(word, {begin, word.size()});
  const std::string_view value = word.substr(span.begin, span.end - span.begin);
  const auto behind = [&](char separator) -> std::optional<TextSpan> {
    const auto at = value.find(separator);
    if (at == std::string_view::npos) {
      if (!looksLikeKey(value)) return std::nullopt;
      return span;
    }
    const TextSpan rest{span.begin + at + 1, span.end};
    // "TOKEN:", "TOKEN:x": the key is where the user's name is expected.
    if (rest.end - rest.begin <= 1 && looksLikeKey(value.substr(0, at))) {
      return TextSpan{span.begin, span.begin + at};
    }
    return rest;
  };
  std::optional<TextSpan> found = span;
  switch (part) {
    case Part::whole:
      break;
    case Part::behindColon:
      // The colon of a URL or of a drive's letter does not count.
      if (text::contains(value, "://") || isPath(value)) return std::nullopt;
      found = behind(':');
      break;
    case Part::behindPercent:
      found = behind('%');
      break;
    case Part::behindComma:
      found = behind(',');
      break;
    case Part::behindEquals:
      found = behind('=');
      break;
    case Part::slashToAt: {
      const auto slash = value.find('/');
      if (slash == std::string_view::npos || slash == 0 || value[0] == '@') return std::nullopt;
      const auto at = value.rfind('@');
      found->begin = span.begin + slash + 1;
      if (at != std::string_view::npos && at > slash) found->end = span.begin + at;
      break;
    }
    case Part::colonToAt: {
      // ":pserver:user:password@host" has a method before the user.
      std::size_t colon = value.find(':');
      if (colon == 0) colon = value.find(':', value.find(':', 1) + 1);
      const auto at = value.rfind('@');
      if (colon == std::string_view::npos || at == std::string_view::npos || at < colon) {
        return std::nullopt;
      }
      found = TextSpan{span.begin + colon + 1, span.begin + at};
      break;
    }
    case Part::likely:
      if (!mayBePassword(value)) return std::nullopt;
      break;
    case Part::pass: {
      constexpr std::string_view kPass = "pass:";
      if (!value.starts_with(kPass)) return std::nullopt;
      found->begin += kPass.size();
      break;
    }
  }
  if (!found || found->begin >= found->end) return std::nullopt;
  const std::string_view secret = word.substr(found->begin, found->end - found->begin);
  if (isNothing(secret) || isPortMapping(secret)) return std::nullopt;
  return found;
}

/// Applies one program's rules to its words, one after the other.
class Follower {
 public:
  explicit Follower(std::vector<ArgumentSpan>& found) : found_(found) {}

  void begin(const Ways* ways) {
    ways_ = ways;
    progress_.assign(ways->rules.size(), 0);
    expected_ = nullptr;
    last_ = std::nullopt;
    hasBatchOption_ = false;
  }

  bool isFollowing() const { return ways_ != nullptr; }
  bool isCarrier() const { return ways_ != nullptr && ways_->isCarrier; }
  bool isContainer() const { return ways_ != nullptr && ways_->isContainer; }

  void end() {
    if (ways_ != nullptr && ways_->masksLastWord && hasBatchOption_ && last_) {
      add(*last_, 0, Part::whole);
    }
    ways_ = nullptr;
  }

  void take(const PlacedWord& word) {
    const std::string_view text = word.word.text;
    if (expected_ != nullptr) {
      const Step* option = expected_;
      expected_ = nullptr;
      if (!isOption(text)) {
        add(word, 0, option->part);
        return;
      }
    }
    const bool isAnOption = text.size() > 1 && text[0] == '-';
    if (ways_->masksLastWord) {
      if (isAnOption) {
        hasBatchOption_ = hasBatchOption_ || (text[1] != '-' && text::contains(text, "b"));
      } else {
        last_ = word;
      }
    }
    if (ways_->masksUrls) takeUrl(word);
    if (ways_->masksDsns) takeDsn(word);
    for (std::size_t i = 0; i < ways_->rules.size(); ++i) {
      if (advance(ways_->rules[i], progress_[i], word, isAnOption)) return;
    }
  }

 private:
  /// True when the word was a credential.
  bool advance(const Rule& rule, std::size_t& at, const PlacedWord& word, bool isAnOption) {
    if (at == rule.size()) return false;  // this rule is only about words before this one
    const std::string_view text = word.word.text;
    const Step& step = rule[at];
    switch (step.kind) {
      case StepKind::option:
        return takeOption(step, word);
      case StepKind::literal:
        if (matches(step, text)) {
          ++at;
        } else if (at > 0 && !isAnOption && rule[0].kind == StepKind::literal &&
                   rule.back().kind != StepKind::option) {
          at = matches(rule[0], text) ? 1 : 0;
        }
        return false;
      case StepKind::anything:
        if (isAnOption) return false;
        ++at;
        return false;
      case StepKind::likely:
      case StepKind::credential:
        break;
    }
    if (isOption(text) || (isAnOption && text.size() == 2)) return false;
    const bool isLikely = step.kind == StepKind::credential ||
                          ((looksSecret(text) || looksLikeKey(text)) && !text::contains(text, "="));
    const bool isAdded = isLikely && add(word, 0, step.part);
    // The word with the credential may still follow.
    if (!isAdded && (step.part == Part::slashToAt || step.part == Part::colonToAt)) {
      return false;
    }
    ++at;
    if (at == rule.size() && rule[0].kind == StepKind::literal) at = 0;
    return isAdded;
  }

  static bool matches(const Step& step, std::string_view text) {
    if (step.isBeginning) return text.starts_with(step.text);
    if (step.isEnding) return text.ends_with(step.text);
    return text == step.text;
  }

  bool takeOption(const Step& option, const PlacedWord& word) {
    const std::string_view text = word.word.text;
    if (!text.starts_with(option.text)) {
      // "-su user:password": the option is the last of several in one word.
      if (option.part != Part::whole && endsCluster(text, option.text)) expected_ = &option;
      return expected_ == &option;
    }
    if (text.size() == option.text.size()) {
      if (option.mayBeNext) expected_ = &option;
      return option.mayBeNext;
    }
    if (!option.mayBeGlued) return false;
    std::size_t value = option.text.size();
    if (text[value] == '=') {
      ++value;
    } else if (option.mayBeNext && !mayBeGluedTo(option.text, text.substr(value))) {
      return false;
    }
    return add(word, value, option.part);
  }

  /// Whether `rest` can be a value, and not the rest of a longer option's name: "-pass" in
  /// "-passwd" and "-p" in "-port" have no value.
  static bool mayBeGluedTo(std::string_view option, std::string_view rest) {
    if (option.size() > 2 && option[0] == '-') return false;
    return rest.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") != std::string_view::npos;
  }

  static bool endsCluster(std::string_view text, std::string_view option) {
    constexpr std::size_t kLongest = 7;
    return option.size() == 2 && text.size() > 2 && text.size() <= kLongest && text[0] == '-' &&
           text.back() == option[1] && std::all_of(text.begin() + 1, text.end(), text::isLetter);
  }

  void takeUrl(const PlacedWord& word) {
    const auto scheme = word.word.text.find("://");
    if (scheme != std::string_view::npos) add(word, scheme + 3, Part::whole);
  }

  void takeDsn(const PlacedWord& word) {
    const std::string_view text = word.word.text;
    const auto before = text.find(",p=");
    if (before == std::string_view::npos) return;
    const std::size_t begin = before + 3;
    const std::size_t end = std::min(text.find(',', begin), text.size());
    if (begin < end) {
      found_.push_back({word.argument, {word.word.begin + begin, word.word.begin + end}});
    }
  }

  bool add(const PlacedWord& word, std::size_t begin, Part part) {
    const auto span = credentialIn(word.word.text, begin, part);
    if (!span) return false;
    const std::size_t offset = word.word.begin;
    found_.push_back({word.argument, {offset + span->begin, offset + span->end}});
    return true;
  }

  std::vector<ArgumentSpan>& found_;
  const Ways* ways_ = nullptr;
  std::vector<std::size_t> progress_;  // for each rule, its next step
  const Step* expected_ = nullptr;     // the option whose value comes next
  std::optional<PlacedWord> last_;
  bool hasBatchOption_ = false;
};

/// Options that make a program read a password from its standard input.
bool asksForInput(std::string_view word) {
  return word == "-S" || word == "-kS" || word == "-Sk" || text::contains(word, "stdin") ||
         text::contains(word, "passphrase-fd") || text::contains(word, "with-token") ||
         text::contains(word, "password-stdin");
}

/// One search through all words of a process.
class Search {
 public:
  explicit Search(std::vector<ArgumentSpan>& found) : found_(found), follower_(found) {}

  void run(std::span<const std::string_view> arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      takeWord({{arguments[i], 0, i == 0, false, false}, i});
    }
    follower_.end();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (holdsBlank(arguments[i])) takeText(arguments[i], i);
    }
  }

 private:
  static bool holdsBlank(std::string_view text) {
    return text.find(' ') != std::string_view::npos || text.find('\n') != std::string_view::npos;
  }

  void takeWord(const PlacedWord& word) {
    if (!word.word.beginsCommand && !follower_.isFollowing()) return;
    const bool mayBeProgram =
        word.word.beginsCommand || isBehindDashes_ || (follower_.isCarrier() && !isValue_);
    isBehindDashes_ = word.word.text == "--";
    if (word.word.beginsCommand) follower_.end();
    if (mayBeProgram && !word.word.text.empty() && word.word.text[0] != '-') {
      ++lookUps_;
      // "command=sshpass -p …"
      const std::size_t behindName = word.word.beginsCommand ? word.word.text.rfind('=') + 1 : 0;
      if (const Ways* ways = findProgram(word.word.text.substr(behindName))) {
        follower_.end();
        follower_.begin(ways);
        isValue_ = false;
        return;
      }
    }
    isValue_ = follower_.isContainer() && mayTakeValue(word.word.text);
    if (follower_.isFollowing()) follower_.take(word);
  }

  /// Whether the next word may be the value of this option: "--name mysql".
  static bool mayTakeValue(std::string_view word) {
    if (!word.starts_with("--") || word.size() == 2 || text::contains(word, "=")) return false;
    constexpr std::array<std::string_view, 7> kSwitches{
        "--rm", "--init", "--privileged", "--tty", "--interactive", "--detach", "--read-only"};
    return std::ranges::find(kSwitches, word) == kSwitches.end();
  }

  void takeText(std::string_view text, std::size_t argument) {
    ShellWords words(text);
    text_ = text;
    asksForPassword_ = std::nullopt;
    written_.clear();
    isGroup_ = false;
    hasHereString_ = false;
    command_.clear();
    isValue_ = false;
    Word word;
    while (words.next(word)) {
      if (isFull()) {
        found_.push_back({argument, {word.begin, text.size()}});
        break;
      }
      if (word.beginsCommand) endCommand(argument);
      takeWord({word, argument});
      // Long commands need not be kept whole: what is piped into a program is short.
      if (command_.size() < kMostWords) command_.push_back(word);
      hasHereString_ = hasHereString_ || word.isHereString;
    }
    endCommand(argument);
    follower_.end();
  }

  /// Whether so many credentials have been found, or programs looked up, that the rest is masked
  /// without a search.
  bool isFull() const {
    constexpr std::size_t kMost = 1000;
    constexpr int kMostLookUps = 8192;
    return found_.size() >= kMost || lookUps_ >= kMostLookUps;
  }

  /// "echo V | sudo -S command", "(echo V; echo V) | passwd", "chpasswd <<< user:V"
  void endCommand(std::size_t argument) {
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
    // Checked first, because few commands have input and the question is costly.
    const bool hasInput = hasHereString_ || (command_[0].isBehindPipe && !written_.empty());
    if (hasInput) takeInput(argument);
    if (command_[0].text == "send" && asksForPassword()) addSent(command_.back(), argument);
    written_.clear();
    isGroup_ = false;
    hasHereString_ = false;
    command_.clear();
  }

  void takeInput(std::size_t argument) {
    const bool reads = readsPassword();
    const bool isPair = endsInName(command_[0].text, "chpasswd");
    if (reads && command_[0].isBehindPipe) {
      for (const Word& word : written_) addPiped(word, argument, isPair);
    }
    if (!reads && !readsIntoCredential()) return;
    for (const Word& word : command_) {
      if (word.isHereString) addPiped(word, argument, isPair);
    }
  }

  /// "read -s PASS"
  bool readsIntoCredential() const {
    return command_[0].text == "read" &&
           std::any_of(command_.begin() + 1, command_.end(), [](const Word& word) {
             const NameKind kind = kindOf(word.text);
             return !word.isHereString && (kind == NameKind::password || kind == NameKind::token);
           });
  }

  bool asksForPassword() {
    if (!asksForPassword_) {
      asksForPassword_ = text::contains(text_, "assword") || text::contains(text_, "assphrase");
    }
    return *asksForPassword_;
  }

  /// What an expect script sends when it is asked for a password: "send V\r".
  void addSent(Word word, std::size_t argument) {
    for (const std::string_view ending : {"\r", "\n"}) {
      if (word.text.ends_with(ending)) word.text.remove_suffix(ending.size());
    }
    if (const auto span = credentialIn(word.text, 0, Part::whole)) {
      found_.push_back({argument, {word.begin + span->begin, word.begin + span->end}});
    }
  }

  static bool writes(std::string_view name) { return name == "echo" || name == "printf"; }

  static bool endsInName(std::string_view word, std::string_view name) {
    return text::lastPathComponent(word) == name;
  }

  /// "gh secret set NAME"
  bool keepsSecret() const {
    constexpr std::array<std::string_view, 5> kFilters{"grep", "sed", "awk", "tee", "jq"};
    if (std::ranges::find(kFilters, command_[0].text) != kFilters.end()) {
      return false;
    }
    return std::any_of(command_.begin() + 1, command_.end(), [](const Word& word) {
      return word.text == "secret" || word.text == "secrets" || word.text == "set-password";
    });
  }

  bool readsPassword() const {
    if (keepsSecret()) return true;
    const auto isReaderAt = [&](std::size_t i) {
      return i < command_.size() && readsPipedPassword(text::lastPathComponent(command_[i].text));
    };
    return isReaderAt(0) || (command_[0].text == "sudo" && isReaderAt(1)) ||
           std::ranges::any_of(command_, [](const Word& word) { return asksForInput(word.text); });
  }

  void addPiped(const Word& word, std::size_t argument, bool isPair) {
    if (isOption(word.text) || word.text == "%s" || word.text == "%s\\n") return;
    const Part part = isPair || text::contains(word.text, ":") ? Part::behindColon : Part::whole;
    if (const auto span = credentialIn(word.text, 0, part)) {
      found_.push_back({argument, {word.begin + span->begin, word.begin + span->end}});
    }
  }

  std::vector<ArgumentSpan>& found_;
  Follower follower_;
  static constexpr std::size_t kMostWords = 64;
  std::string_view text_;
  std::vector<Word> written_;  // what the command before this one echoes
  bool isGroup_ = false;       // "(echo a; echo b)"
  bool hasHereString_ = false;
  std::optional<bool> asksForPassword_;  // about a script; empty until it is needed
  std::vector<Word> command_;            // the words so far of this command
  int lookUps_ = 0;
  bool isBehindDashes_ = false;
  bool isValue_ = false;  // the next word is the value of an option
};

}  // namespace

void appendProgramCredentials(std::span<const std::string_view> arguments,
                              std::vector<ArgumentSpan>& found) {
  Search(found).run(arguments);
}

}  // namespace credentials
