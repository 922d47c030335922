#include "scanner/roles/self_made_server.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"

namespace recognition {
namespace {

/// Models that many serve with a few lines of their own.
constexpr std::string_view kKinds =
    "whisper whisperx tts stt asr embedding embeddings embedder rerank reranker";
constexpr std::string_view kServes = "server serve serving api service";
/// A program with one of these words in its name is a client or a test of such a server.
constexpr std::string_view kOnlyAbout =
    "client watchdog monitor mock stub proxy health healthcheck test tests benchmark";
/// What may stand beside the kind in the name of a project.
constexpr std::string_view kBeside = "faster fast local openai gpu cpu cuda rocm";

using Words = std::vector<std::string_view>;

bool hasOneOf(std::string_view list, const Words& words) {
  return std::ranges::any_of(words, [list](std::string_view word) { return isListed(list, word); });
}

/// The script's own name, or the last part of the module's.
std::string_view ownName(const Invocation& invocation) {
  if (invocation.module.empty()) return withoutSuffix(invocation.script);
  const std::string_view module = invocation.module;
  return module.substr(module.rfind('.') + 1);
}

/// The package, the folder or the project that a general name is in.
std::string_view homeOf(const Invocation& invocation) {
  const std::string_view module = invocation.module;
  const auto dot = module.rfind('.');
  if (dot != std::string_view::npos && dot > 0 && module.substr(0, dot) != "app") {
    const std::string_view package = module.substr(0, dot);
    return package.substr(package.rfind('.') + 1);
  }
  return invocation.folder.empty() ? invocation.project : invocation.folder;
}

}  // namespace

std::string selfMadeServer(const Invocation& invocation) {
  if (!invocation.isPython) return {};
  const Words own = wordsOf(ownName(invocation));
  if (hasOneOf(kOnlyAbout, own)) return {};
  if (hasOneOf(kKinds, own)) return hasOneOf(kServes, own) ? joined(own) : std::string();

  const bool isGeneral = own.size() == 1 && isListed("server serve api app main", own.front());
  if (!isGeneral) return {};
  const Words home = wordsOf(homeOf(invocation));
  const bool isOfKind = std::ranges::all_of(home, [](std::string_view word) {
    return isListed(kKinds, word) || isListed(kServes, word) || isListed(kBeside, word);
  });
  if (!isOfKind || !hasOneOf(kKinds, home)) return {};
  if (hasOneOf(kServes, home)) return joined(home);
  const bool serves = invocation.isServedByHost || own.front() != "main";
  return serves ? joined(home) + " server" : std::string();
}

}  // namespace recognition
