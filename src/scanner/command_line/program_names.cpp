#include "scanner/command_line/program_names.h"

#include <algorithm>
#include <cstring>

#include "text/ascii.h"
#include "text/path.h"
#include "text/split.h"
#include "text/unicode.h"

namespace recognition {
namespace {

constexpr std::string_view kVersionCharacters = "0123456789.";

/// The name without the machine it was built for, word by word from its end.
std::string_view withoutMachine(std::string_view name) {
  constexpr std::string_view kMachines =
      "linux darwin macos mac windows win x64 x86 64 amd64 arm64 aarch64 cuda cu11 cu12 nocuda "
      "oldpc oldcpu rocm vulkan musl gnu static universal";
  while (true) {
    const auto dash = name.find_last_of("-_");
    if (dash == std::string_view::npos || dash == 0) return name;
    if (!isListed(kMachines, name.substr(dash + 1))) return name;
    name = name.substr(0, dash);
  }
}

bool isVersion(std::string_view name) {
  return !name.empty() && name.find_first_not_of(kVersionCharacters) == std::string_view::npos;
}

/// "python3.11" → "python", "clang-17" → "clang"; but "stage2" and "h2" keep their digit, as does
/// every program without a "-" before its version that is no interpreter.
std::string_view withoutVersion(std::string_view name) {
  const auto last = name.find_last_not_of(kVersionCharacters);
  if (last == std::string_view::npos || last + 1 == name.size()) return name;
  if (name[last] == '-') return name.substr(0, last);
  const std::string_view stem = name.substr(0, last + 1);
  return isListed("python pypy node java ruby perl php lua pip python3-dbg", stem) ? stem : name;
}

}  // namespace

std::string normalized(std::string_view name) {
  std::string out = text::lowered(text::withinBytes(name, kLongestName));
  std::ranges::replace_if(
      out, [](char c) { return c == '_' || c == ' '; }, '-');
  return out;
}

std::string programName(std::string_view path) {
  std::string_view name = text::lastPathComponent(path);
  while (isVersion(name)) {
    const auto before = path.rfind(name);
    if (before == std::string_view::npos || before == 0) break;
    path = path.substr(0, before);
    name = text::lastPathComponent(path);
    if (name == "versions" || name == "bin" || name == "current") {
      path = path.substr(0, path.rfind(name));
      name = text::lastPathComponent(path);
    }
  }
  if (name.size() > 1 && name.front() == '-') name.remove_prefix(1);  // a shell of a login
  std::string out = normalized(name);
  if (out.ends_with(".exe")) out.resize(out.size() - 4);
  return std::string(withoutMachine(withoutVersion(out)));
}

std::vector<std::string_view> wordsOf(std::string_view name) {
  std::vector<std::string_view> words;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= name.size(); ++i) {
    if (i < name.size() && text::isAlphanumeric(name[i])) continue;
    if (i > begin) words.push_back(name.substr(begin, i - begin));
    begin = i + 1;
  }
  return words;
}

bool isOption(std::string_view word) {
  return word.size() > 1 && word.front() == '-';
}

bool hasWord(std::string_view name, std::string_view word) {
  for (auto at = name.find(word); at != std::string_view::npos; at = name.find(word, at + 1)) {
    const std::size_t behind = at + word.size();
    const bool begins = at == 0 || !text::isAlphanumeric(name[at - 1]);
    if (begins && (behind == name.size() || !text::isAlphanumeric(name[behind]))) return true;
  }
  return false;
}

bool isListed(std::string_view list, std::string_view word) {
  if (word.empty() || word.find(' ') != std::string_view::npos) return false;
  const char* const end = list.data() + list.size();
  for (const char* at = list.data(); at < end; ++at) {
    // Most lists do not hold the word: it is looked for in one go.
    const auto left = static_cast<std::size_t>(end - at);
    at = static_cast<const char*>(memmem(at, left, word.data(), word.size()));
    if (at == nullptr) return false;
    const bool begins = at == list.data() || at[-1] == ' ';
    const char* const behind = at + word.size();
    if (begins && (behind == end || *behind == ' ')) return true;
  }
  return false;
}

NormalizedOption::NormalizedOption(std::string_view written) {
  written = written.substr(0, written.find('='));
  if (written.size() > buffer_.size()) return;
  std::ranges::transform(written, buffer_.begin(),
                         [](char c) { return c == '_' || c == ' ' ? '-' : text::asciiLower(c); });
  size_ = written.size();
}

std::vector<std::string_view> listed(std::string_view list) {
  return text::partsOf(list, ' ');
}

}  // namespace recognition
