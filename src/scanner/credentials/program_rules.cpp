#include "scanner/credentials/program_rules.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "scanner/credentials/program_table.h"
#include "text/ascii.h"
#include "text/name_table.h"
#include "text/split.h"

namespace credentials {
namespace {

template <typename Use>
void forEachPart(std::string_view text, char between, Use use) {
  while (!text.empty()) {
    if (const auto part = text::takeUntil(between, text); !part.empty()) use(part);
  }
}

Part partOf(char character) {
  switch (character) {
    case ':':
      return Part::behindColon;
    case '%':
      return Part::behindPercent;
    case ',':
      return Part::behindComma;
    case '=':
      return Part::behindEquals;
    case '/':
      return Part::slashToAt;
    case '@':
      return Part::colonToAt;
    case '~':
      return Part::pass;
    case '#':
      return Part::likely;
    default:
      return Part::whole;
  }
}

bool isMode(char c) {
  return c == '>' || c == '<' || c == '^';
}

Step stepOf(std::string_view text) {
  Step step;
  if (text == "?") {
    step.kind = StepKind::anything;
  } else if (text[0] == '!' || text[0] == '#') {
    step.kind = text[0] == '!' ? StepKind::credential : StepKind::likely;
    if (text.size() == 2) step.part = partOf(text[1]);
  } else if (isMode(text.back()) || (text.size() > 2 && isMode(text[text.size() - 2]))) {
    step.kind = StepKind::option;
    if (!isMode(text.back())) {
      step.part = partOf(text.back());
      text.remove_suffix(1);
    }
    step.mayBeGlued = text.back() != '^';
    step.mayBeNext = text.back() != '<';
    step.text = text.substr(0, text.size() - 1);
  } else {
    step.isBeginning = text.ends_with('*');
    step.isEnding = text.starts_with('*');
    if (step.isBeginning) text.remove_suffix(1);
    if (step.isEnding) text.remove_prefix(1);
    step.text = text;
  }
  return step;
}

Ways waysOf(std::string_view rules) {
  Ways ways;
  forEachPart(rules, '|', [&](std::string_view part) {
    Rule rule;
    forEachPart(part, ' ', [&](std::string_view step) {
      if (step == "!last") {
        ways.masksLastWord = true;
      } else if (step == "!url") {
        ways.masksUrls = true;
      } else if (step == "!dsn") {
        ways.masksDsns = true;
      } else {
        rule.push_back(stepOf(step));
      }
    });
    if (!rule.empty()) ways.rules.push_back(std::move(rule));
  });
  return ways;
}

/// The table of programs, parsed.
class Programs {
 public:
  Programs();

  const Ways* find(std::string_view word) const {
    if (word.empty() || word.back() == '/') return nullptr;
    if (const auto slash = word.rfind('/'); slash != std::string_view::npos) {
      word.remove_prefix(slash + 1);
    }
    if (const auto slash = word.rfind('\\'); slash != std::string_view::npos) {
      word.remove_prefix(slash + 1);
    }
    for (const std::string_view ending : {".exe", ".py", ".js"}) {
      if (word.ends_with(ending)) word.remove_suffix(ending.size());
    }
    if (word.size() > kLongestName || word.empty() ||
        !lengths_[static_cast<unsigned char>(word[0]) & 31U][word.size()]) {
      return nullptr;
    }
    std::array<char, kLongestName> lower{};
    std::ranges::transform(word, lower.begin(), text::asciiLower);
    const auto* program = byName_.find(std::string_view(lower.data(), word.size()));
    if (program == nullptr) program = byName_.find(word);
    return program == nullptr ? nullptr : &all_[*program];
  }

 private:
  static constexpr std::size_t kLongestName = 24;

  std::vector<Ways> all_;
  text::NameTable<std::uint16_t> byName_;
  std::array<std::array<bool, kLongestName + 1>, 32> lengths_{};  // by first letter
};

Programs::Programs() {
  std::vector<decltype(byName_)::Entry> names;
  const auto add = [&](std::string_view name) {
    names.emplace_back(name, static_cast<std::uint16_t>(all_.size() - 1));
    lengths_[static_cast<unsigned char>(name[0]) & 31U][name.size()] = true;
  };
  for (const Program& program : kPrograms) {
    all_.push_back(waysOf(program.rules));
    forEachPart(program.names, ' ', add);
  }
  all_.push_back({});  // for launchers that stand in no other row
  forEachPart(kLauncherNames, ' ', add);
  byName_ = decltype(byName_)(std::move(names));

  const auto named = [this](std::string_view name) -> Ways& { return all_[*byName_.find(name)]; };
  forEachPart(kLauncherNames, ' ', [&](std::string_view name) { named(name).isLauncher = true; });
  forEachPart(kContainers, ' ', [&](std::string_view name) { named(name).isContainer = true; });
}

}  // namespace

const Ways* findProgram(std::string_view word) {
  static const Programs programs;
  return programs.find(word);
}

bool readsPipedPassword(std::string_view name) {
  bool reads = false;
  forEachPart(kReaders, ' ', [&](std::string_view reader) { reads = reads || reader == name; });
  return reads;
}

}  // namespace credentials
