#pragma once

#include <string_view>
#include <vector>

#include "scanner/text_span.h"

/// Appends the credentials in `text` that their shape alone gives away, in order: keys and
/// tokens with a prefix that their issuer gave them (sk-, hf_, ghp_, AKIA, …) and JSON web
/// tokens (eyJ….….…), wherever they stand. What merely shares a prefix with one
/// ("sk-learn", "hf_transfer", "disk-1") is none. Linear in the length of the text.
void appendCredentialShapes(std::string_view text, std::vector<TextSpan>& found);
