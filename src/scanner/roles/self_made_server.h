#pragma once

#include <string>

#include "scanner/command_line/invocation.h"

namespace recognition {

/// What a server that somebody wrote for a model of speech or of embeddings says of itself:
/// "embedding server" of embedding_server.py; of a general name such as server.py with the folder
/// or the project that it is in ("whisper server"). Empty: it is none, or does not say so.
std::string selfMadeServer(const Invocation& invocation);

}  // namespace recognition
