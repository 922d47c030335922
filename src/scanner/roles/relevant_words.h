#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scanner/command_line/invocation.h"

namespace recognition {

/// The words of a command line that count for the word rules: who runs (what launches it, the
/// program, the module, the package, the script's own name), the subcommands, the names of options,
/// and models. Left out is what may hold somebody else's words: folders on the way, texts, hosts,
/// sessions, addresses, files. Left out, too, are words that merely contain a word of the rules
/// ("dora" in fedora). Of paths, those parts are kept by which the word rules know a product.
std::vector<std::string> relevantWords(Arguments arguments, const Invocation& invocation);

}  // namespace recognition
