#pragma once

#include "scanner/command_line/invocation.h"

namespace recognition {

/// Whether a program that nobody knows has options that only agents have: "--yolo", or a provider
/// beside the model.
bool hasAgentOptions(const Invocation& invocation);

}  // namespace recognition
