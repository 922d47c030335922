#pragma once

#include <string_view>

/// Whether what goes by this name is a credential: the name of an option ("--hf-token"),
/// of a variable ("OPENAI_API_KEY"), of a header ("X-Api-Key") or of a field ("apiKey").
/// The name is split into words at "-", "_", "." and where its case changes. It names a
/// credential when they hold one of the words for it, unless they say something about a
/// credential ("token-limit", "key-file", "auth-type") or mean a plain thing of that name
/// ("max-token", "eos-token", "sort-key").
bool namesCredential(std::string_view name);
