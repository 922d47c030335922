#include "scanner/recognizer.h"

#include <algorithm>
#include <string>
#include <vector>

#include "scanner/command_line/arguments.h"
#include "scanner/command_line/ignored_programs.h"
#include "scanner/command_line/model_options.h"
#include "scanner/command_line/program_names.h"
#include "scanner/naming/friendly_naming.h"
#include "scanner/naming/model_name.h"
#include "scanner/naming/process_title.h"
#include "scanner/naming/product_name.h"
#include "scanner/roles/mcp_server.h"
#include "scanner/roles/relevant_words.h"
#include "scanner/roles/role_by_activity.h"
#include "scanner/roles/role_by_words.h"
#include "scanner/roles/searched_line.h"
#include "text/path.h"
#include "text/unicode.h"

namespace recognition {
namespace {

using ProcessScanner::FriendlyName;

FriendlyName nameByRules(Arguments arguments, LabRole role) {
  ProcessScanner::SearchedLine line;
  line.read(arguments, joined(arguments));
  return ProcessScanner::nameOf(line, role, {});
}

/// The name of a process that has no role, although words in its line, which are not about itself,
/// look like one to the rules: only its first word names it.
FriendlyName nameOfWithdrawn(Arguments arguments, const Invocation& invocation) {
  const Arguments line = invocation.titleWords.empty() ? arguments : invocation.titleWords;
  return nameByRules(line.first(1), LabRole::none);
}

bool worksOnOthersWords(const Invocation& invocation) {
  const std::string_view module = invocation.module;
  return isIgnoredProgram(invocation.program) || (!module.empty() && isIgnoredProgram(module)) ||
         isIgnoredProgram(module.substr(0, module.find('.'))) ||
         isIgnoredProgram(text::lastPathComponent(invocation.package)) ||
         (!invocation.package.empty() && isIgnoredProgram(invocation.package));
}

/// The role that the rules give when they see only the words that count.
LabRole roleByRelevantWords(std::string_view exe, Arguments arguments,
                            const Invocation& invocation) {
  const std::vector<std::string> relevant = relevantWords(arguments, invocation);
  const std::vector<std::string_view> views(relevant.begin(), relevant.end());
  ProcessScanner::SearchedLine line;
  line.read(views, joined(views));
  return ProcessScanner::roleOf(exe, line);
}

bool isOllama(std::string_view path) {
  return hasWord(text::lowered(path.substr(0, 4096)), "ollama");
}

/// Names Ollama's own runners, and the llama-server that it starts: "Ollama: gemma3 4b". False for
/// every other process.
bool nameOllama(const Invocation& invocation, Verdict& verdict) {
  constexpr std::string_view kBlob = "/blobs/sha256-";
  const std::string_view program = invocation.program;
  const bool isOwn = program == "ollama" || program == "ollama-llama-server";
  const bool isChild = program == "llama-server";
  if (!isOwn && !isChild) return false;
  const auto subcommands = subcommandsOf(invocation);
  const std::string_view verb = subcommands.empty() ? "" : std::string_view(subcommands.front());
  if (isOwn && verb != "runner" && verb != "run" && program == "ollama") return false;
  const auto model = modelOf(invocation, "", verb == "run" ? "run" : "\n");
  const bool isBlob = model && model->find(kBlob) != std::string_view::npos;
  if (isChild && !isBlob && !isOllama(invocation.path)) return false;
  if (isBlob) {
    verdict.blob = *model;
    const std::string_view digits = model->substr(model->rfind(kBlob) + kBlob.size());
    verdict.name =
        isChild ? FriendlyName{"Ollama: " + std::string(text::withinBytes(digits, 8)), "Ollama"}
                : FriendlyName{"Ollama", "Ollama"};
    return true;
  }
  // A model's own name has a tag ("gemma3:4b"); people who type it often leave the tag out.
  if (model && (verb == "run" || isChild || model->find(':') != std::string_view::npos)) {
    verdict.name = FriendlyName{"Ollama: " + modelName(*model), "Ollama"};
    return true;
  }
  return false;
}

class Recognizer {
 public:
  Recognizer(std::string_view exe, Arguments arguments, LabRole byRules, const Products& products)
      : exe_(exe),
        arguments_(arguments),
        byRules_(byRules),
        products_(products),
        invocation_(invocationOf(arguments)) {}

  Verdict verdict() {
    verdict_.byRules = byRules_;
    verdict_.waits = invocation_.waits;
    if (invocation_.isWrapper) return none();
    if (auto worker = workerOf(invocation_, products_)) {
      verdict_.role = worker->role;
      verdict_.name = FriendlyName{std::move(worker->displayName), std::move(worker->product)};
      return std::move(verdict_);
    }
    if (!invocation_.isTitle || !invocation_.titleWords.empty()) {
      if (const KnownProduct known = products_.of(invocation_); known.product != nullptr) {
        return ofProduct(known);
      }
    }
    if (worksOnOthersWords(invocation_)) return none();
    const Activity activity = activityOf(invocation_);
    if (activity.role) return ofStructure(activity);
    return ofRules();
  }

 private:
  Verdict none() {
    verdict_.role = LabRole::none;
    // Of a command line in one piece the rules would take the end of some path for the name.
    const bool isPath =
        !invocation_.titleWords.empty() && arguments_.front().find('/') != std::string_view::npos;
    if (byRules_ != LabRole::none || isPath) {
      verdict_.name = nameOfWithdrawn(arguments_, invocation_);
    }
    return std::move(verdict_);
  }

  Verdict ofProduct(const KnownProduct& known) {
    const Product& product = *known.product;
    const Activity activity = activityOf(known, invocation_);
    if (!activity.role || *activity.role == LabRole::none) {
      Activity nothing = activity;
      nothing.role = LabRole::none;
      verdict_.name = productName(product, nothing, invocation_);
      if (!activity.role) verdict_.name.reset();
      verdict_.role = LabRole::none;
      if (!verdict_.name) return none();
      return std::move(verdict_);
    }
    verdict_.role = *activity.role;
    if (nameOllama(invocation_, verdict_)) return std::move(verdict_);
    verdict_.name = productName(product, activity, invocation_);
    // MLX servers keep the name that the word rules give them.
    const bool isMlx = product.name.find("MLX") != std::string_view::npos ||
                       product.name.find("mlx") != std::string_view::npos;
    if (!verdict_.name || isMlx) {
      FriendlyName name = nameByRules(arguments_, verdict_.role);
      if (verdict_.name && name.product != "MLX" && verdict_.role != LabRole::training) {
        return withRank();
      }
      verdict_.name =
          withModelAndPort(std::move(name), verdict_.role, product.modelOptions, invocation_);
    }
    return withRank();
  }

  Verdict ofStructure(const Activity& activity) {
    if (*activity.role == LabRole::none) return none();
    verdict_.role = *activity.role;
    FriendlyName name = nameByRules(arguments_, verdict_.role);
    if (verdict_.role == LabRole::agent) {
      const bool isNamed =
          name.product != "Process" && name.product != "Python" && name.product != "App";
      if (activity.verb != "mcp") return std::move(verdict_);
      verdict_.name = isNamed ? std::move(name) : mcpServerName(invocation_);
      return std::move(verdict_);
    }
    verdict_.name = verdict_.role == LabRole::training ? lightningName(invocation_)
                                                       : selfMadeServerName(invocation_);
    if (!verdict_.name) {
      verdict_.name = withModelAndPort(std::move(name), verdict_.role, "", invocation_);
    }
    return withRank();
  }

  /// For a program that is in no table: the rules decide, by the words that count.
  Verdict ofRules() {
    if (byRules_ == LabRole::none) return std::move(verdict_);
    verdict_.role = roleByRelevantWords(exe_, arguments_, invocation_);
    if (verdict_.role != LabRole::none) {
      verdict_.role = roleOfSubcommand(invocation_, verdict_.role).value_or(verdict_.role);
    }
    if (verdict_.role == LabRole::none) return none();
    verdict_.name =
        withModelAndPort(nameByRules(arguments_, verdict_.role), verdict_.role, "", invocation_);
    return withRank();
  }

  Verdict withRank() {
    if (verdict_.role == LabRole::training && verdict_.name && !invocation_.isDistributed) {
      verdict_.name->displayName += rankSuffix(arguments_);
    }
    return std::move(verdict_);
  }

  std::string_view exe_;
  Arguments arguments_;
  LabRole byRules_;
  const Products& products_;
  Invocation invocation_;
  Verdict verdict_;
};

}  // namespace

Verdict verdictOn(std::string_view exe, Arguments arguments, LabRole byRules,
                  const Products& products) {
  // The first arguments tell what a program is; a line with thousands must not cost more.
  constexpr std::size_t kMostArguments = 256;
  arguments = arguments.first(std::min(arguments.size(), kMostArguments));
  if (arguments.empty()) return {.role = byRules, .byRules = byRules};
  if (ProcessScanner::wrapperExecutables().contains(exe)) return {.byRules = byRules};
  return Recognizer(exe, arguments, byRules, products).verdict();
}

}  // namespace recognition
