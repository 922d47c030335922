#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scanner/command_line/invocation.h"
#include "scanner/process_scanner.h"
#include "scanner/roles/role_by_activity.h"

namespace recognition {

/// What a process of a known product is called, from its row; none where the word rules name it.
std::optional<ProcessScanner::FriendlyName> productName(const Product& product,
                                                        const Activity& activity,
                                                        const Invocation& invocation);

/// "Lightning fit: vit", of a script that has Lightning's command line ("main.py fit --config
/// vit.yaml"); none for another.
std::optional<ProcessScanner::FriendlyName> lightningName(const Invocation& invocation);

/// "whisper server  (:9000)", of one that somebody wrote (self_made_server.h); none for another,
/// and where a model says more.
std::optional<ProcessScanner::FriendlyName> selfMadeServerName(const Invocation& invocation);

/// A name by the word rules, with the model and the port that these rules did not find, because
/// they don't know the options.
ProcessScanner::FriendlyName withModelAndPort(ProcessScanner::FriendlyName name, LabRole role,
                                              std::string_view modelOptions,
                                              const Invocation& invocation);

/// "  (rank 3 of 8)", from RANK, LOCAL_RANK and WORLD_SIZE in the arguments; "" where none is.
std::string rankSuffix(Arguments arguments);

}  // namespace recognition
