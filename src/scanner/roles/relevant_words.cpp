#include "scanner/roles/relevant_words.h"

#include <algorithm>
#include <unordered_set>

#include "scanner/command_line/program_names.h"
#include "scanner/roles/role_by_activity.h"
#include "scanner/roles/role_word_table.h"
#include "text/ascii.h"
#include "text/path.h"
#include "text/unicode.h"

namespace recognition {
namespace {

constexpr std::size_t kMostArguments = 512;
constexpr std::size_t kLongestCode = 16 << 10;

/// What the word rules look for in paths (naming/tool_names.cpp).
constexpr std::string_view kPathMarks[] = {"/.hermes/", "/.brevik/",    ".app/",
                                           "/ollama",   "/docker.app/", "com.docker."};

/// The words of letters that the markers are made of.
const std::unordered_set<std::string_view>& vocabulary() {
  static const auto words = [] {
    std::unordered_set<std::string_view> set;
    const auto add = [&set](const auto& markers) {
      for (const std::string_view marker : markers) {
        std::size_t begin = 0;
        for (std::size_t i = 0; i <= marker.size(); ++i) {
          if (i < marker.size() && text::isLetter(marker[i])) continue;
          if (i - begin >= 3) set.insert(marker.substr(begin, i - begin));
          begin = i + 1;
        }
      }
    };
    add(kTrainingMarkers);
    add(kLoraMarkers);
    add(kFrameworkMarkers);
    add(kOtherMarkers);
    return set;
  }();
  return words;
}

constexpr std::size_t kShortestTerm = 3;
constexpr std::size_t kLongestTerm = 16;

/// Whether a word of letters has a term of the rules in it only by chance: "fedora" has "dora". One
/// that is a term, or a form of one ("trainer", "servers"), has not.
bool hasTermByChance(std::string_view word) {
  const auto& terms = vocabulary();
  if (terms.contains(word)) return false;
  for (const std::string_view ending : {"s", "d", "r", "ed", "er", "ers", "ing"}) {
    if (word.ends_with(ending) && terms.contains(word.substr(0, word.size() - ending.size()))) {
      return false;
    }
  }
  if (word.size() > 64) return true;
  for (std::size_t begin = 0; begin < word.size(); ++begin) {
    const std::size_t longest = std::min(word.size() - begin, kLongestTerm);
    for (std::size_t size = kShortestTerm; size <= longest; ++size) {
      if (terms.contains(word.substr(begin, size))) return true;
    }
  }
  return false;
}

/// The text with every word taken out that has a term in it only by chance.
std::string withoutChanceTerms(std::string_view text) {
  std::string out = text::lowered(text);
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= out.size(); ++i) {
    if (i < out.size() && text::isLetter(out[i])) continue;
    // "mlx5_0" is a network card.
    const bool isNumbered = i < out.size() && text::isDigit(out[i]) && i - begin == 3 &&
                            std::string_view(out).substr(begin, 3) == "mlx";
    if (i > begin &&
        (isNumbered || hasTermByChance(std::string_view(out).substr(begin, i - begin)))) {
      std::fill(out.begin() + static_cast<long>(begin), out.begin() + static_cast<long>(i), '?');
    }
    begin = i + 1;
  }
  return out;
}

bool isWeightsFile(std::string_view word) {
  return word.ends_with(".gguf") || word.ends_with(".safetensors");
}

bool takesModel(std::string_view option) {
  return hasWord(option, "model") || hasWord(option, "lora") || hasWord(option, "adapter") ||
         option == "-hf" || option == "-m" || hasWord(option, "checkpoint");
}

}  // namespace

std::vector<std::string> relevantWords(Arguments arguments, const Invocation& invocation) {
  std::vector<std::string> relevant;
  const auto add = [&relevant](std::string_view word) {
    relevant.push_back(withoutChanceTerms(text::withinBytes(word, kLongestName)));
  };

  // What launches it: names alone.
  for (std::size_t i = 0; i < std::min(invocation.launcherWords, arguments.size()); ++i) {
    const std::string_view word = arguments[i];
    if (word == "-m") {
      add(word);
    } else if (word.front() != '-' &&
               (i == 0 || word.find("torchrun") != std::string_view::npos ||
                isListed("launch accelerate python python3 deno bun node", programName(word)))) {
      add(text::lastPathComponent(word));
    } else if (word == "torch.distributed.run" || word == "torch.distributed.launch") {
      add("torchrun");
    }
  }
  for (const std::string_view word : arguments.first(std::min<std::size_t>(arguments.size(), 1))) {
    const std::string lowered = text::lowered(text::withinBytes(word, 4096));
    for (const std::string_view mark : kPathMarks) {
      if (lowered.find(mark) != std::string::npos) relevant.emplace_back(mark);
    }
  }
  if (invocation.isCode) {
    std::size_t budget = kLongestCode;
    for (const std::string_view word :
         invocation.arguments.first(std::min<std::size_t>(invocation.arguments.size(), 2))) {
      const std::string_view code = text::withinBytes(word, budget);
      budget -= code.size();
      relevant.push_back(withoutChanceTerms(code));
    }
    return relevant;
  }
  if (!invocation.path.empty()) {
    add(invocation.isTitle ? std::string_view(invocation.program)
                           : text::lastPathComponent(invocation.path));
  }
  if (!invocation.package.empty()) add(invocation.package);
  if (!invocation.module.empty()) add(invocation.module);
  if (invocation.isTitle && invocation.titleWords.empty()) return relevant;

  for (const std::string& word : subcommandsOf(invocation)) add(word);
  const Arguments rest =
      invocation.arguments.first(std::min(invocation.arguments.size(), kMostArguments));
  std::string_view before;
  for (const std::string_view word : rest) {
    const auto equals = word.find('=');
    if (word.starts_with('-')) {
      const std::string option = normalized(word.substr(0, equals));
      add(word.substr(0, equals));
      if (equals != std::string_view::npos && takesModel(option)) {
        add(text::lastPathComponent(word.substr(equals + 1)));
      }
      before = word;
      continue;
    }
    if (isWeightsFile(word)) {
      add(text::lastPathComponent(word));
    } else if (before.find('=') == std::string_view::npos && takesModel(normalized(before))) {
      if (!word.starts_with("http:") && !word.starts_with("https:")) {
        // "mlx-community/Qwen…" is a model's name whole; a path is not.
        const bool isPath = word.starts_with('/') || word.starts_with('.') || word.starts_with('~');
        add(isPath ? text::lastPathComponent(word) : text::withinBytes(word, kLongestName));
      }
    } else if (equals != std::string_view::npos && equals > 0 &&
               word.substr(0, equals).find('/') == std::string_view::npos) {
      add(word.substr(0, equals));
    }
    before = {};
  }
  return relevant;
}

}  // namespace recognition
