#include "scanner/command_line/invocation.h"

#include <algorithm>

#include "scanner/command_line/ignored_programs.h"
#include "scanner/command_line/launchers.h"
#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"
#include "scanner/command_line/unwrapping.h"
#include "scanner/process_scanner.h"
#include "text/path.h"
#include "text/unicode.h"

namespace recognition {
namespace {

constexpr int kMostLaunchers = 8;

/// Whether the process has replaced its arguments by one text that holds the whole command line, as
/// npm and Chromium do. A path may hold blanks as well, so this is believed only where the text
/// begins with the name of a known program.
bool isInOnePiece(Arguments arguments) {
  const std::string_view first = arguments.front();
  const auto blank = first.find(' ');
  if (blank == std::string_view::npos || blank + 1 == first.size()) return false;
  const std::string_view program = first.substr(0, blank);
  if (isListed("npm npx", program)) return true;
  if (arguments.size() > 1) return false;
  const bool isBare = program.find('/') == std::string_view::npos;
  if (!isBare && first[blank + 1] != '-') return false;
  return isIgnoredProgram(isBare ? std::string(program) : programName(program));
}

}  // namespace

Unwrapping::Unwrapping(Arguments arguments) {
  if (arguments.empty()) return;
  const std::string_view first = arguments.front();
  if (isInOnePiece(arguments)) {
    result_.isTitle = true;
    result_.titleWords = listed(text::withinBytes(first, 4096));
    all_ = result_.titleWords;
    rest_ = all_;
    take();
    return;
  }
  all_ = arguments;
  rest_ = arguments;
  const auto colon = first.find(':');
  if (colon != std::string_view::npos && colon > 0 &&
      first.substr(0, colon).find_first_of("/\\=") == std::string_view::npos) {
    title(first.substr(0, colon));
    return;
  }
  take();
}

void Unwrapping::title(std::string_view name) {
  result_.isTitle = true;
  result_.program = normalized(name);
  result_.path = all_.front();
  result_.arguments = all_.subspan(1);
}

void Unwrapping::take() {
  for (int depth = 0; depth < kMostLaunchers; ++depth) {
    if (rest_.empty() || !step()) return;
  }
}

bool Unwrapping::step() {
  settle(rest_.front(), programName(rest_.front()));
  const std::string name = result_.program;
  if (ProcessScanner::wrapperExecutables().contains(name)) {
    result_.isWrapper = true;
    return false;
  }
  if (const Launch what = takeLauncher(name); what != Launch::nothing) {
    return what == Launch::another;
  }
  if (const auto goesOn = takeInterpreter(name)) return *goesOn;
  host();
  return false;
}

void Unwrapping::settle(std::string_view path, std::string program) {
  result_.path = path;
  result_.launcherWords =
      static_cast<std::size_t>(path.data() == nullptr ? 0 : all_.size() - rest_.size());
  result_.program = std::move(program);
  result_.arguments = rest_.subspan(1);
}

Unwrapping::Launch Unwrapping::takeLauncher(std::string_view name) {
  const Launcher* const found = launcherCalled(name);
  if (found == nullptr) return Launch::nothing;
  const Launcher& launcher = *found;
  const auto what = launchedBy(launcher, rest_);
  if (!what) return Launch::nothing;
  rest_ = what->rest;
  result_.waits = result_.waits || launcher.waits;
  if (launcher.isDistributed) {
    result_.isDistributed = true;
    result_.isPython = true;
    return launched(distributed(what->isModule));
  }
  if (what->isModule) return launched(module(rest_.front()));
  if (launcher.runsPackage) return launched(package());
  return Launch::another;
}

bool Unwrapping::package() {
  std::string_view word = rest_.front();
  for (const std::string_view scheme : {"npm:", "jsr:"}) {
    if (word.starts_with(scheme)) word.remove_prefix(scheme.size());
  }
  const std::string name = packageName(word);
  const std::string_view base = text::lastPathComponent(name);
  if (isSource(word)) {
    result_.isPython = word.ends_with(".py");
    settle(word, result_.isPython ? "python" : "node");
    script(word);
    return false;
  }
  if (word.find('/') != std::string_view::npos && !word.starts_with('@')) return true;  // a path
  if (isListed("python node bun java deno tsx ts-node", programName(base))) return true;
  if (word.starts_with('@')) {
    settle(word, std::string(base));
    result_.package = name;
    return false;
  }
  if (launcherCalled(base) != nullptr) return true;
  settle(word, std::string(base));
  result_.package = name;
  host();
  return false;
}

bool Unwrapping::distributed(bool isModule) {
  if (isModule) return module(rest_.front());
  const std::string_view word = rest_.front();
  if (!isSource(word) && text::lastPathComponent(word).find('.') == std::string_view::npos) {
    return true;  // a program
  }
  if (isSource(word)) return pythonScript(word);
  settle(word, "python");
  script(word);
  return false;
}

void Unwrapping::host() {
  const std::string& name = result_.program;
  const bool hasVerb = isListed("fastapi streamlit chainlit flask panel bokeh", name);
  if (!hasVerb &&
      !isListed("uvicorn gunicorn hypercorn granian daphne waitress-serve uwsgi", name)) {
    return;
  }
  for (const std::string_view word : result_.arguments) {
    if (isOption(word)) continue;
    const std::string_view base = text::lastPathComponent(word);
    if (hasVerb && base.ends_with(".py")) {
      script(word);
      result_.isServedByHost = true;
      return;
    }
    const auto colon = word.find(':');
    if (hasVerb || colon == std::string_view::npos || colon == 0 ||
        word.find('/') != std::string_view::npos || word.size() > kLongestName) {
      continue;
    }
    const std::string_view target = word.substr(0, colon);
    if (target.find_first_not_of("0123456789.") == std::string_view::npos) continue;  // an address
    result_.module = normalized(target);
    result_.isServedByHost = true;
    return;
  }
}

Invocation invocationOf(Arguments arguments) {
  return Unwrapping(arguments).result();
}

}  // namespace recognition
