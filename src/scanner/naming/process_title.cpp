#include "scanner/naming/process_title.h"

#include <algorithm>

#include "scanner/command_line/program_names.h"
#include "scanner/process_scanner.h"
#include "text/ascii.h"
#include "text/unicode.h"

namespace recognition {
namespace {

/// Workers of model servers: how their titles begin, and what is shown instead.
struct Part {
  std::string_view begins;  ///< lower case
  std::string_view name;    ///< what is shown
};
constexpr Part kParts[] = {
    {"enginecore", "engine"},
    {"engine", "engine"},
    {"worker", "worker"},
    {"apiserver", "API server"},
    {"dpcoordinator", "coordinator"},
    {"scheduler", "scheduler"},
    {"detokenizer", "detokenizer"},
    {"tokenizer", "tokenizer"},
    {"data_parallel_controller", "controller"},
    {"router", "router"},
    {"http_server", "HTTP server"},
};

/// Words of camel case and of others: "ServeReplica" is "serve replica".
std::string splitWords(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool begins = text::isUpper(text[i]) && i > 0 && text::isLower(text[i - 1]);
    if (begins) out += ' ';
    out += text::isAlphanumeric(text[i]) ? text[i] : ' ';
  }
  return text::lowered(out);
}

bool hasAnyWord(std::string_view words, std::string_view wanted) {
  const auto found = listed(words);
  return std::ranges::any_of(found,
                             [wanted](std::string_view word) { return isListed(wanted, word); });
}

/// The number among the workers of one model, behind "TP", else the one that a worker ends with:
/// 3 of "scheduler_DP0_TP3" and of "Worker_TP3_DP0".
std::string_view workerNumber(std::string_view text) {
  const auto parallel = text.rfind("_TP");
  if (parallel != std::string_view::npos) text = text.substr(0, text.find('_', parallel + 1));
  const auto last = text.find_last_not_of("0123456789");
  const auto number = text.substr(last == std::string_view::npos ? 0 : last + 1);
  return number.size() <= 4 ? number : std::string_view();
}

/// An actor of Ray, which says what class or function it runs.
TitledWorker rayActor(std::string_view part) {
  const std::string words = splitWords(part.substr(0, part.find('(')));
  constexpr std::string_view kReplica = "ServeReplica:";
  if (part.starts_with(kReplica)) {
    // ServeReplica:APPLICATION:DEPLOYMENT
    part.remove_prefix(kReplica.size());
    const auto application = part.find(':');
    const std::string_view deployment =
        application == std::string_view::npos ? part : part.substr(application + 1);
    std::string name(deployment);
    std::ranges::replace(name, ':', ' ');
    return {LabRole::inference, "Ray Serve: " + ProcessScanner::basenameModel(name), "Ray Serve"};
  }
  if (part.starts_with("ServeController")) {
    return {LabRole::inference, "Ray Serve controller", "Ray Serve"};
  }
  if (part.starts_with("ProxyActor") || part.starts_with("HTTPProxy")) {
    return {LabRole::inference, "Ray Serve proxy", "Ray Serve"};
  }
  if (part.starts_with("RayWorkerWrapper")) {
    return {LabRole::inference, "vLLM worker (Ray)", "vLLM"};
  }
  // A dictionary of workers and the task that runs them: how verl trains.
  if (part.starts_with("WorkerDict")) {
    return {LabRole::training, "verl worker (Ray)", "verl"};
  }
  if (part.starts_with("main_task") || part.starts_with("TaskRunner")) {
    return {LabRole::training, "verl main task (Ray)", "verl"};
  }
  if (hasAnyWord(words,
                 "train trainer training ppo grpo sft rlhf actor critic reward reference "
                 "policy learner rollout finetune") &&
      (hasAnyWord(words, "train trainer training ppo grpo sft rlhf learner finetune") ||
       hasAnyWord(words, "model"))) {
    return {LabRole::training, "Training worker (Ray)", "Training"};
  }
  if (hasAnyWord(words, "vllm llm sglang engine serve server wrapper") &&
      !hasAnyWord(words, "job submit")) {
    return {LabRole::inference, "Ray model worker", "Ray"};
  }
  return {LabRole::none, {}, {}};
}

}  // namespace

std::optional<TitledWorker> workerOf(const Invocation& invocation, const Products& products) {
  if (!invocation.isTitle) return std::nullopt;
  const auto colons = invocation.path.find("::");
  if (colons == std::string_view::npos) return std::nullopt;
  const std::string_view part = text::withinBytes(invocation.path.substr(colons + 2), kLongestName);
  if (invocation.program == "ray") {
    auto actor = rayActor(part);
    if (actor.role == LabRole::none) return std::nullopt;
    return actor;
  }
  const Product* const product = products.called(invocation.program);
  const std::string lowered = text::lowered(part);
  if (product == nullptr) {
    // No known product, but a title such as only model servers' workers have.
    for (const std::string_view begins : {"enginecore", "scheduler_", "detokenizer", "worker_tp"}) {
      if (!lowered.starts_with(begins)) continue;
      const auto shown = ProcessScanner::basenameModel(invocation.path);
      return TitledWorker{LabRole::inference, shown, "Process"};
    }
    return std::nullopt;
  }
  if (product->role == LabRole::none) return std::nullopt;
  std::string name(part);
  for (const Part& known : kParts) {
    if (!lowered.starts_with(known.begins)) continue;
    name = known.name;
    const std::string_view number = workerNumber(part);
    if (!number.empty() && known.name != "engine") name += " " + std::string(number);
    break;
  }
  return TitledWorker{product->role, std::string(product->name) + " " + name,
                      std::string(product->name)};
}

}  // namespace recognition
