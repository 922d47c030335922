#include "scanner/command_line/invocation.h"

#include <algorithm>
#include <optional>

#include "scanner/command_line/ignored_programs.h"
#include "scanner/command_line/launchers.h"
#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"
#include "scanner/process_scanner.h"
#include "text/contains.h"
#include "text/path.h"
#include "text/unicode.h"

namespace recognition {
namespace {

constexpr int kMostLaunchers = 8;
constexpr std::size_t kLongestPath = 4096;

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

class Unwrapping {
 public:
  explicit Unwrapping(Arguments arguments) {
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
      title(first.substr(0, colon), first.substr(colon));
      return;
    }
    take();
  }

  Invocation result() { return std::move(result_); }

 private:
  /// "nginx: worker process", "VLLM::EngineCore": the program's name stands before the colon.
  void title(std::string_view name, std::string_view part) {
    result_.isTitle = true;
    result_.program = normalized(name);
    result_.path = all_.front();
    result_.arguments = all_.subspan(1);
    while (part.starts_with(':')) part.remove_prefix(1);
  }

  void take() {
    for (int depth = 0; depth < kMostLaunchers; ++depth) {
      if (rest_.empty() || !step()) return;
    }
  }

  /// Takes the first of the words that are left for the program. True when it only launches
  /// another, with which the words that are left then begin.
  bool step() {
    settle(rest_.front(), programName(rest_.front()));
    const std::string name = result_.program;
    if (ProcessScanner::wrapperExecutables().contains(name)) {
      result_.isWrapper = true;
      return false;
    }
    if (const Launch what = takeLauncher(name); what != Launch::nothing) {
      return what == Launch::another;
    }
    if (isListed("python pypy python3-dbg python-dbg pythonw ipython-script", name)) {
      return python();
    }
    if (isListed("node nodejs bun deno tsx ts-node electron", name)) return node(name);
    if (name == "java") return java();
    if (result_.launcherWords > 0 && name.ends_with(".py")) {
      result_.isPython = true;
      return pythonScript(rest_.front());
    }
    if (isListed("ruby perl php rscript dotnet julia lua", name)) return scriptOf();
    host();
    return false;
  }

  void settle(std::string_view path, std::string program) {
    result_.path = path;
    result_.launcherWords =
        static_cast<std::size_t>(path.data() == nullptr ? 0 : all_.size() - rest_.size());
    result_.program = std::move(program);
    result_.arguments = rest_.subspan(1);
  }

  enum class Launch {
    nothing,  ///< it is no launcher, or one that launches nothing
    another,  ///< rest_ begins with what it launches
    settled,  ///< it is known already what that is
  };

  static Launch launched(bool goesOn) { return goesOn ? Launch::another : Launch::settled; }

  /// Goes on to what a launcher of this name launches.
  Launch takeLauncher(std::string_view name) {
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

  /// What a package runner runs: a package, or a program or script of the project.
  bool package() {
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

  bool distributed(bool isModule) {
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

  bool python() {
    result_.isPython = true;
    result_.project = projectOf(rest_.front());
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      const std::string_view word = rest_[i];
      if (!isOption(word)) {
        rest_ = rest_.subspan(i);
        return pythonScript(word);
      }
      if (word == "-W" || word == "-X" || word == "--check-hash-based-pycs") {
        ++i;
        continue;
      }
      if (word.starts_with("--") || word.starts_with("-W") || word.starts_with("-X")) continue;
      const auto letter = word.find_first_of("mc");
      if (letter == std::string_view::npos) continue;
      if (word[letter] == 'c') {
        result_.isCode = true;
        result_.arguments = rest_.subspan(i);
        return false;
      }
      if (letter + 1 < word.size()) {  // -mpkg
        rest_ = rest_.subspan(i);
        return module(word.substr(letter + 1));
      }
      if (i + 1 >= rest_.size()) return false;
      rest_ = rest_.subspan(i + 1);
      return module(rest_.front());
    }
    return false;
  }

  /// The folder of the project to whose own environment (venv) this Python belongs; "" for none.
  static std::string projectOf(std::string_view python) {
    const auto folder = text::withinBytes(python, kLongestPath);
    if (text::containsAny(folder, {"/venv/", "/.venv/", "/env/"})) return nearestFolder(folder);
    // "/opt/tabbyapi-venv/bin/python"
    std::string name = nearestFolder(folder);
    for (const std::string_view ending : {"-venv", ".venv", "-env"}) {
      if (name.size() > ending.size() && name.ends_with(ending)) {
        name.resize(name.size() - ending.size());
        return name;
      }
    }
    return {};
  }

  bool module(std::string_view word) {
    result_.isPython = true;
    const std::string name = normalized(word);
    if (const Launch what = takeLauncher(name); what != Launch::nothing) {
      return what == Launch::another;
    }
    settle(word, std::string(name.substr(0, name.find('.'))));
    result_.module = name;
    host();
    return false;
  }

  bool pythonScript(std::string_view path) {
    const std::string_view base = text::lastPathComponent(path);
    const std::string installed = isSource(base) ? installedModule(path) : std::string();
    if (!installed.empty()) {
      if (const Launch what = takeLauncher(installed); what != Launch::nothing) {
        return what == Launch::another;
      }
      settle(path, std::string(installed.substr(0, installed.find('.'))));
      result_.module = installed;
      result_.script = normalized(base);
      host();
      return false;
    }
    if (isSource(base)) {
      settle(path, "python");
      script(path);
      return false;
    }
    return true;  // a program that is written in Python
  }

  void script(std::string_view path) {
    result_.script = normalized(text::lastPathComponent(path));
    result_.folder = tellingFolder(path);
  }

  bool node(std::string_view name) {
    std::size_t i = 1;
    if (i < rest_.size() && (name == "deno" || name == "bun") &&
        (rest_[i] == "run" || rest_[i] == "serve")) {
      ++i;
    }
    for (; i < rest_.size() && isOption(rest_[i]); ++i) {
      const std::string_view word = rest_[i];
      if (isListed("-e --eval -p --print", word)) {
        result_.isCode = true;
        result_.arguments = rest_.subspan(i);
        return false;
      }
      if (isListed("-r --require --import --loader --experimental-loader --env-file -C "
                   "--conditions --title --cwd",
                   word)) {
        ++i;
      }
    }
    if (i >= rest_.size()) return false;
    rest_ = rest_.subspan(i);
    const std::string_view path = rest_.front();
    if (path.starts_with("npm:") || path.starts_with("jsr:")) return package();
    if (const auto inside = inNodeModules(path)) return nodePackage(path, *inside);
    const std::string_view base = text::lastPathComponent(path);
    if (!isSource(base)) return true;  // a program that is written in JavaScript
    settle(path, std::string("node"));
    script(path);
    return false;
  }

  bool nodePackage(std::string_view path, std::string_view inside) {
    if (inside.starts_with(".bin/")) return true;
    const std::string package = normalized(packageOfPath(inside));
    const std::string_view base = text::lastPathComponent(inside);
    const std::string stem = normalized(withoutSuffix(base));
    if (isListed("npm pnpm yarn", package)) {
      // npm-cli.js and npx-cli.js are npm and npx
      const std::string tool = stem.starts_with("npx") ? "npx" : package;
      settle(path, tool);
      return takeLauncher(tool) == Launch::another;
    }
    settle(path, std::string(text::lastPathComponent(package)));
    result_.package = package;
    result_.script = normalized(base);
    return false;
  }

  bool java() {
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      const std::string_view word = rest_[i];
      if (word == "-jar") {
        if (i + 1 >= rest_.size()) return false;
        rest_ = rest_.subspan(i + 1);
        settle(rest_.front(), programName(withoutSuffix(text::lastPathComponent(rest_.front()))));
        return false;
      }
      if (isListed("-cp -classpath --class-path -p --module-path --add-opens --add-exports "
                   "--add-modules",
                   word)) {
        ++i;
      } else if (!isOption(word)) {
        rest_ = rest_.subspan(i);
        settle(word, "java");
        result_.module = normalized(word);
        return false;
      }
    }
    return false;
  }

  bool scriptOf() {
    std::size_t i = 1;
    while (i < rest_.size() && isOption(rest_[i])) {
      if (rest_[i] == "-e" || rest_[i] == "-r") {
        result_.isCode = true;
        return false;
      }
      ++i;
    }
    if (i >= rest_.size()) return false;
    rest_ = rest_.subspan(i);
    settle(rest_.front(), programName(withoutSuffix(text::lastPathComponent(rest_.front()))));
    return false;
  }

  /// Of a program that runs applications (uvicorn, streamlit), the application says what it is.
  void host() {
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
      if (target.find_first_not_of("0123456789.") == std::string_view::npos)
        continue;  // an address
      result_.module = normalized(target);
      result_.isServedByHost = true;
      return;
    }
  }

  Invocation result_;
  Arguments all_;
  Arguments rest_;
};

}  // namespace

Invocation invocationOf(Arguments arguments) {
  return Unwrapping(arguments).result();
}

}  // namespace recognition
