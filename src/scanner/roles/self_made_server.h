#pragma once

#include <string>

#include "scanner/command_line/invocation.h"

namespace recognition {

/// What to call a server that somebody wrote for a model of speech or of embeddings: "embedding
/// server" for embedding_server.py; where the name is as general as server.py, by its folder or
/// project ("whisper server"). Empty for everything else.
std::string selfMadeServer(const Invocation& invocation);

}  // namespace recognition
