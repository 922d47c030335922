#include "scanner/command_line/program_paths.h"

#include <algorithm>

#include "scanner/command_line/program_names.h"
#include "text/path.h"

namespace recognition {

std::string_view withoutSuffix(std::string_view name) {
  for (const std::string_view suffix :
       {".py", ".js", ".mjs", ".cjs", ".ts", ".mts", ".pyc", ".sh", ".rb", ".pl", ".jar", ".dll"}) {
    if (name.size() > suffix.size() && name.ends_with(suffix)) {
      return name.substr(0, name.size() - suffix.size());
    }
  }
  return name;
}

bool isSource(std::string_view name) {
  return withoutSuffix(name).size() < name.size();
}

std::string packageName(std::string_view word) {
  for (const std::string_view scheme : {"git+https://github.com/", "github:"}) {
    if (word.starts_with(scheme)) word.remove_prefix(scheme.size());
  }
  const auto end = word.find_first_of("[=<>~", 0);
  if (end != std::string_view::npos) word = word.substr(0, end);
  const auto version = word.rfind('@');
  if (version != std::string_view::npos && version > 0) word = word.substr(0, version);
  if (word.ends_with(".git")) word.remove_suffix(4);
  return normalized(word);
}

std::string nearestFolder(std::string_view path) {
  constexpr std::string_view kPlaces =
      "src dist build lib bin out scripts cli app server packages cjs esm js target release debug "
      "output node venv .venv env .env installer-files";
  while (true) {
    const auto slash = path.find_last_not_of('/');
    if (slash == std::string_view::npos) return {};
    path = path.substr(0, slash + 1);
    const auto before = path.rfind('/');
    if (before == std::string_view::npos) return {};
    path = path.substr(0, before);
    const std::string_view folder = text::lastPathComponent(path);
    if (folder.empty() || folder == "/" || folder == "." || folder == "..") return {};
    if (!isListed(kPlaces, normalized(folder))) return normalized(folder);
  }
}

std::string tellingFolder(std::string_view path) {
  constexpr std::string_view kGeneral =
      "main app server run start index cli launch webui api bot worker __main__ bundle serve "
      "entry program mcp inference demo";
  const std::string script = normalized(withoutSuffix(text::lastPathComponent(path)));
  if (!isListed(kGeneral, script) && script != "--main--") return {};
  return nearestFolder(path);
}

std::string installedModule(std::string_view path) {
  for (const std::string_view place : {"/site-packages/", "/dist-packages/"}) {
    const auto found = path.rfind(place);
    if (found == std::string_view::npos) continue;
    std::string module = normalized(withoutSuffix(path.substr(found + place.size())));
    std::ranges::replace(module, '/', '.');
    return module;
  }
  return {};
}

std::optional<std::string_view> inNodeModules(std::string_view path) {
  constexpr std::string_view kPlace = "node_modules/";
  constexpr std::string_view kLink = ".bin/../";
  const auto found = path.rfind(kPlace);
  if (found == std::string_view::npos) return std::nullopt;
  path.remove_prefix(found + kPlace.size());
  if (path.starts_with(kLink)) path.remove_prefix(kLink.size());
  return path;
}

std::string_view packageOfPath(std::string_view path) {
  auto slash = path.find('/');
  if (path.starts_with('@') && slash != std::string_view::npos) slash = path.find('/', slash + 1);
  return path.substr(0, slash);
}

}  // namespace recognition
