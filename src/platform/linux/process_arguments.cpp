#include "platform/linux/process_arguments.h"

#include <optional>
#include <string>

#include "platform/posix/argument_list.h"
#include "text/path.h"
#include "text/unicode.h"

namespace platform {
namespace {

constexpr char kEnd = '\0';
constexpr char kBlank = ' ';

/// The block's only string, without the padding behind it; none if it has no string or several.
std::optional<std::string_view> onlyString(std::string_view block) {
  const auto begin = block.find_first_not_of(kEnd);
  if (begin == std::string_view::npos) return std::nullopt;
  block.remove_prefix(begin);
  const auto end = block.find(kEnd);
  if (end != std::string_view::npos) {
    if (block.find_first_not_of(kEnd, end) != std::string_view::npos) return std::nullopt;
    block = block.substr(0, end);
  }
  return block.substr(0, block.find_last_not_of(kBlank) + 1);
}

/// Whether `name` is the program's name; comm holds only the first 15 bytes of that.
bool isProgramName(std::string_view name, const ProcessOrigin& origin) {
  if (name.empty()) return false;
  if (!origin.executable.empty()) return name == text::lastPathComponent(origin.executable);
  constexpr std::size_t kLongestComm = 15;
  return name.substr(0, kLongestComm) == origin.comm;
}

/// The word of a title that stands for argv[0]; "" when this is no title of the program.
/// The executable's path may itself hold blanks.
std::string_view programWord(std::string_view title, const ProcessOrigin& origin) {
  const std::size_t length = origin.executable.size();
  if (length > 0 && title.starts_with(origin.executable) &&
      (title.size() == length || title[length] == kBlank)) {
    return title.substr(0, length);
  }
  const std::string_view word = title.substr(0, title.find(kBlank));
  std::string_view name = text::lastPathComponent(word);
  // "postgres: walwriter" reads well as it is; of "sshd: ada@pts/0" only "0" would be shown.
  if (name.ends_with(':') && title.find('/') != std::string_view::npos) name.remove_suffix(1);
  return isProgramName(name, origin) ? word : std::string_view();
}

/// The part of the block that is read: the arguments that end within the limit.
std::string_view withinLimit(std::string_view block) {
  if (block.size() <= kLongestCommandLine) return block;
  const auto end = block.rfind(kEnd, kLongestCommandLine - 1);
  return block.substr(0, end);
}

void appendAll(std::string_view strings, char separator, ProcessFacts& facts) {
  while (!strings.empty()) {
    const auto end = strings.find(separator);
    appendArgument(strings.substr(0, end), facts);
    if (end == std::string_view::npos) break;
    strings.remove_prefix(end + 1);
  }
}

void appendArguments(std::string_view block, const ProcessOrigin& origin, ProcessFacts& facts) {
  const auto title = onlyString(block);
  if (!title) return appendAll(block, kEnd, facts);
  const std::string_view program = programWord(*title, origin);
  if (program.empty()) return appendArgument(*title, facts);
  appendArgument(program, facts);
  appendAll(title->substr(program.size()), kBlank, facts);
}

/// Whether a name says too little: one with a "/" in it, or the beginning of a title ("sshd:").
bool isPoorName(std::string_view name) {
  return name.find('/') != std::string_view::npos || name.ends_with(':');
}

}  // namespace

void readArguments(std::string_view block, const ProcessOrigin& origin, ProcessFacts& facts) {
  startArguments(facts, block.size());
  const std::string_view read = withinLimit(block);
  appendArguments(read, origin, facts);
  // What was not read may be only padding behind a title.
  if (block.find_first_not_of(kEnd, read.size()) != std::string_view::npos) facts.isCut = true;

  const std::string_view program = text::lastPathComponent(origin.executable);
  if (facts.arguments.empty()) {
    facts.name = text::repairedUtf8(program);
    return;
  }
  facts.name = text::lastPathComponent(facts.arguments.front());
  if (!isPoorName(facts.name)) return;
  if (const auto better = program.empty() ? origin.comm : program; !better.empty()) {
    facts.name = text::repairedUtf8(better);
  }
}

bool needsOrigin(std::string_view block, const ProcessFacts& facts) {
  return facts.name.empty() || isPoorName(facts.name) ||
         onlyString(block).value_or("").find(kBlank) != std::string_view::npos;
}

std::string_view openTitle(std::string_view block) {
  const std::string_view title = onlyString(block).value_or("");
  const auto blank = title.find(kBlank);
  if (blank == std::string_view::npos || blank == 0) return {};
  if (title.size() > kLongestCommandLine || !text::isUtf8(title)) return {};

  const std::string_view program = title.substr(0, blank);
  for (const std::string_view first : {title, program}) {
    if (isPoorName(text::lastPathComponent(first))) return {};
  }
  // This blank may be inside the executable's path ("/opt/my app/run"); then the origin decides
  // more. Not if "-" follows: nobody names a file so.
  const bool mayGoOn = program.find('/') != std::string_view::npos && title[blank + 1] != '-';
  return mayGoOn ? std::string_view() : title;
}

}  // namespace platform
