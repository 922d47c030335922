#include "scanner/credentials/program_credentials.h"

#include <algorithm>
#include <array>

#include "scanner/credentials/looks_secret.h"
#include "scanner/credentials/piped_credentials.h"
#include "scanner/credentials/program_rule_follower.h"
#include "scanner/credentials/program_rules.h"
#include "scanner/credentials/randomness.h"
#include "scanner/credentials/shell_words.h"
#include "text/contains.h"

namespace credentials {
namespace {

/// One search through all words of a process.
class Search {
 public:
  explicit Search(std::vector<ArgumentSpan>& found)
      : found_(found), follower_(found), piped_(found) {}

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
        word.word.beginsCommand || isBehindDashes_ || (follower_.isLauncher() && !isValue_);
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
    piped_.begin(text, argument);
    isValue_ = false;
    Word word;
    while (words.next(word)) {
      if (isFull()) {
        found_.push_back({argument, {word.begin, text.size()}});
        break;
      }
      piped_.take(word);
      takeWord({word, argument});
    }
    piped_.end();
    follower_.end();
  }

  /// So many credentials have been found, or programs looked up, that the rest is masked instead.
  bool isFull() const {
    constexpr std::size_t kMost = 1000;
    constexpr int kMostLookUps = 8192;
    return found_.size() >= kMost || lookUps_ >= kMostLookUps;
  }

  std::vector<ArgumentSpan>& found_;
  RuleFollower follower_;
  PipedCredentials piped_;
  int lookUps_ = 0;
  bool isBehindDashes_ = false;
  bool isValue_ = false;  // the next word is the value of an option
};

bool isUserOption(std::string_view option) {
  constexpr std::array<std::string_view, 10> kOptions{
      "-u",    "-U",      "--user", "-l",      "--username",
      "-user", "--login", "--auth", "--creds", "--credentials"};
  return std::ranges::find(kOptions, option) != kOptions.end();
}

bool isPasswordOption(std::string_view option) {
  return option == "-p" || option == "-P" || option == "-w" || option == "-W";
}

/// Options that some programs use for a password. No matter which program it is, a value that
/// looks random is taken for one.
bool mayTakePassword(std::string_view option) {
  constexpr std::array<std::string_view, 8> kOptions{"-a",  "-A",    "-k", "-K",
                                                     "-pw", "-auth", "-S", "-t"};
  constexpr std::size_t kLongest = 5;
  if (option.size() > kLongest) return false;
  return isPasswordOption(option) || std::ranges::find(kOptions, option) != kOptions.end();
}

/// Of every program, because most are in no table: where a user's name is given, a word behind "-p"
/// that looks like a password is taken for one, and so is what follows the user's name and a ":".
void appendFromUnknownPrograms(std::span<const std::string_view> arguments,
                               std::vector<ArgumentSpan>& found) {
  constexpr std::size_t kShortestGenerated = 10;
  bool hasUser = false;
  for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
    const std::string_view option = arguments[i];
    if (option.size() < 2 || option[0] != '-') continue;
    const std::string_view value = arguments[i + 1];
    if (isUserOption(option)) {
      hasUser = true;
      const std::size_t colon = value.find(':');
      if (colon != std::string_view::npos && colon > 0 &&
          value.find_first_of("?=/") == std::string_view::npos) {
        const std::string_view password = value.substr(colon + 1);
        if (looksSecret(password) || looksLikeKey(password)) {
          found.push_back({i + 1, {colon + 1, value.size()}});
        }
      }
    } else if ((hasUser && isPasswordOption(option) && looksSecret(value)) ||
               (value.size() >= kShortestGenerated && mayTakePassword(option) &&
                looksGenerated(value))) {
      found.push_back({i + 1, {0, value.size()}});
    }
  }
}

}  // namespace

void appendProgramCredentials(std::span<const std::string_view> arguments,
                              std::vector<ArgumentSpan>& found) {
  Search(found).run(arguments);
  appendFromUnknownPrograms(arguments, found);
}

}  // namespace credentials
