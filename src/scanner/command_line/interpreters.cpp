// What Python, Node, Java and other interpreters run.
#include <optional>

#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"
#include "scanner/command_line/unwrapping.h"
#include "text/contains.h"
#include "text/path.h"
#include "text/unicode.h"

namespace recognition {
namespace {

constexpr std::size_t kLongestPath = 4096;

/// The folder of the project to whose own environment (venv) this Python belongs; "" for none.
std::string projectOf(std::string_view python) {
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

}  // namespace

std::optional<bool> Unwrapping::takeInterpreter(std::string_view name) {
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
  return std::nullopt;
}

bool Unwrapping::python() {
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

bool Unwrapping::module(std::string_view word) {
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

bool Unwrapping::pythonScript(std::string_view path) {
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

void Unwrapping::script(std::string_view path) {
  result_.script = normalized(text::lastPathComponent(path));
  result_.folder = tellingFolder(path);
}

bool Unwrapping::node(std::string_view name) {
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

bool Unwrapping::nodePackage(std::string_view path, std::string_view inside) {
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

bool Unwrapping::java() {
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

bool Unwrapping::scriptOf() {
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

}  // namespace recognition
