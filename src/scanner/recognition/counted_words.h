#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scanner/recognition/invocation.h"

namespace recognition {

/// Of a command line the words that count for the rules of roles: who runs (what carries it, the
/// program, the module, the package, the script's own name), the subcommands, the names of options,
/// and models. Not what the words of others may be in: folders on the way, texts, hosts, sessions,
/// addresses, files. Of those that count, none is kept that only holds a word of the rules inside
/// a longer one ("dora" in fedora). Of paths the marks are kept by which the naming rules know
/// a product.
std::vector<std::string> countedWords(Arguments arguments, const Invocation& invocation);

}  // namespace recognition
