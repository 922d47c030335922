#include "scanner/naming/friendly_naming.h"

#include <algorithm>
#include <optional>

#include "scanner/command_line/arguments.h"
#include "scanner/command_line/model_options.h"
#include "scanner/command_line/option_values.h"
#include "scanner/roles/role_by_words.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

using recognition::Arguments;

/// "  (:8080)", or nothing when no port is given.
std::string givenPortSuffix(Arguments arguments) {
  constexpr std::string_view kOptions[] = {"--port"};
  const auto port = optionValue(arguments, kOptions);
  return port ? "  (:" + std::string(*port) + ")" : "";
}

FriendlyName llamaServerName(Arguments arguments) {
  constexpr std::string_view kOptions[] = {"--model", "-m"};
  const std::string_view model = modelOption(arguments, kOptions).value_or("LLM");
  return {"LM Studio: " + basenameModel(model) + givenPortSuffix(arguments), "LM Studio"};
}

/// The model of "serve MODEL" and "run MODEL".
std::optional<std::string_view> servedModel(Arguments arguments) {
  for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
    const bool isCommand = arguments[i] == "serve" || arguments[i] == "run";
    if (isCommand && !arguments[i + 1].starts_with('-')) return arguments[i + 1];
  }
  return std::nullopt;
}

FriendlyName mlxServerName(Arguments arguments) {
  constexpr std::string_view kOptions[] = {"--model", "-m", "--served-model-name"};
  auto model = servedModel(arguments);
  if (!model) model = modelOption(arguments, kOptions);
  return {"MLX Server: " + basenameModel(model.value_or("MLX model")) + givenPortSuffix(arguments),
          "MLX"};
}

std::string withoutAll(std::string_view text, std::string_view part) {
  std::string rest;
  for (auto found = text.find(part); found != std::string_view::npos; found = text.find(part)) {
    rest += text.substr(0, found);
    text.remove_prefix(found + part.size());
  }
  return rest.append(text);
}

/// The name of the application bundle that a path is in (the outermost if they are nested): "Foo"
/// for /Applications/Foo.app/x.
std::optional<std::string> bundleName(std::string_view path) {
  constexpr std::string_view kSuffix = ".app";
  std::size_t slash = path.find('/');
  while (slash != std::string_view::npos) {
    const std::size_t nextSlash = path.find('/', slash + 1);
    if (nextSlash == std::string_view::npos) break;
    const std::string_view part = path.substr(slash + 1, nextSlash - slash - 1);
    if (part.size() > kSuffix.size() && part.ends_with(kSuffix)) {
      return withoutAll(part, kSuffix);
    }
    slash = nextSlash;
  }
  return std::nullopt;
}

/// The module or script that Python runs.
std::optional<std::string_view> pythonProgram(Arguments arguments) {
  const auto option = std::ranges::find(arguments, "-m");
  if (option != arguments.end() && option + 1 != arguments.end()) return *(option + 1);
  const auto script =
      std::find_if(arguments.begin() + 1, arguments.end(),
                   [](std::string_view argument) { return argument.ends_with(".py"); });
  if (script != arguments.end()) return text::lastPathComponent(*script);
  return std::nullopt;
}

/// The role that the line has by itself, with the first argument as the executable.
LabRole ownRole(const SearchedLine& line) {
  const Arguments arguments = line.arguments();
  if (arguments.empty()) return LabRole::none;
  return roleOf(text::lowered(text::lastPathComponent(arguments[0])), line);
}

}  // namespace

FriendlyName nameOf(const SearchedLine& line, LabRole role, std::string_view fallback) {
  const Arguments arguments = line.arguments();
  if (arguments.empty()) return {std::string(fallback), "Process"};
  const std::string_view exe = text::lastPathComponent(arguments[0]);

  if (line.has("llama-server") || exe == "llama-server") return llamaServerName(arguments);
  if (line.has("rapid-mlx") || (line.has("mlx") && line.has("serve"))) {
    return mlxServerName(arguments);
  }
  if (auto tool = knownTool(exe, line)) return *tool;
  if (role == LabRole::training) return trainingName(line);
  if (auto helper = knownHelper(exe, line)) return *helper;
  for (const std::string_view argument : arguments) {
    if (auto bundle = bundleName(argument)) return {*bundle, "App"};
  }
  if (exe.starts_with("python")) {
    if (const auto program = pythonProgram(arguments)) {
      return {"Python: " + std::string(*program), "Python"};
    }
  }
  return {std::string(exe.empty() ? fallback : exe), "Process"};
}

FriendlyName nameOf(const SearchedLine& line, std::string_view fallback) {
  return nameOf(line, ownRole(line), fallback);
}

FriendlyName friendlyName(std::span<const std::string> cmdline, LabRole role,
                          std::string_view fallback) {
  const auto arguments = recognition::viewsOf(cmdline);
  SearchedLine line;
  line.read(arguments, recognition::joined(arguments));
  return nameOf(line, role, fallback);
}

FriendlyName friendlyName(std::span<const std::string> cmdline, std::string_view fallback) {
  const auto arguments = recognition::viewsOf(cmdline);
  SearchedLine line;
  line.read(arguments, recognition::joined(arguments));
  return nameOf(line, fallback);
}

}  // namespace ProcessScanner
