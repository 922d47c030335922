#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "scanner/lab_role.h"
#include "scanner/vorda_process.h"

struct VordaLaunchAgent;

/// Finds, recognises and names the machine's processes. Every decision is a fixed list of text
/// tests on what a process shows; the first test that fires decides. All functions but scan() are
/// pure, and none fails: what can't be read is left out.
///
/// These signatures are fixed: other tools compile against them. The program itself holds a
/// RepeatedScan (repeated_scan.h), which takes the same steps over views and reads a command line
/// once for all of them.
namespace ProcessScanner {

// Which processes are listed, and in what order: repeated_scan.cpp.

/// The processes that the menu shows: AI workloads of any size and owner, and the user's
/// own ordinary processes of at least `minMemMB` MiB; never the program itself. Training
/// first, then inference, agent, none; larger first within a role; equals as the system
/// lists them. Command lines are redacted. Blocks while it samples; keeps no state.
std::vector<VordaProcess> scan(double minMemMB);

/// The same for a caller that has asked already what starts by itself: `launchAgents` are all that
/// LaunchAgentScanner::scan() has found, for the labels of those that run as a process.
/// `alsoPids`, ascending: of the user's own ordinary processes these are listed whatever their
/// memory.
std::vector<VordaProcess> scan(double minMemMB, std::span<const VordaLaunchAgent> launchAgents,
                               std::span<const std::int32_t> alsoPids = {});

// What a process is: roles/role_by_words.cpp.

/// The role of a process, from its executable name (or path), its arguments and its command line.
/// Training is tested before inference, so a training run that mentions a server is still
/// training; a shell or another wrapper never has a role.
LabRole classifyLabRole(std::string_view name, std::span<const std::string> cmdline,
                        std::string_view joined);

/// Whether a process trains or fine-tunes a model. All texts are lower case: `exe` the
/// executable's name, `lower` the command line, `args` the arguments. `isServing`: the
/// command line looks like a server's, which then needs stronger evidence of training.
bool isTrainingProcess(std::string_view exe, std::string_view lower,
                       std::span<const std::string> args, bool isServing);

/// Executables that only launch or wrap a workload; their processes have no role.
const std::set<std::string_view>& wrapperExecutables();

// What a process is called: naming/friendly_naming.cpp, naming/model_name.cpp,
// command_line/option_values.cpp.

/// What a process is called.
struct FriendlyName {
  std::string displayName;  ///< for people: "LoRA fine-tune: Llama 3 8B"
  std::string product;      ///< groups processes for colouring: "Fine-tune"
};

/// The readable name of a process. `fallback` is the name to show when the arguments say
/// nothing.
FriendlyName friendlyName(std::span<const std::string> cmdline, std::string_view fallback);

/// A model's path or identifier as a short readable name: last path component, without
/// the endings of weight files, blanks for "_" and "-", at most 48 characters;
/// "Unknown model" when nothing is left.
std::string basenameModel(std::string_view model);

/// The value given with any of the options `names`: "--opt value" or "--opt=value". The first
/// argument that matches counts, whatever the order of the names. The value may be empty
/// ("--opt="). An option without a value at the end is ignored.
std::optional<std::string> flag(std::span<const std::string> arguments,
                                std::span<const std::string_view> names);

// What is hidden in a command line: credentials/.

/// The command line with every option named like a credential, and its value, replaced by
/// one and the same text.
[[nodiscard]] std::string redactSecrets(std::string_view commandLine);

}  // namespace ProcessScanner
