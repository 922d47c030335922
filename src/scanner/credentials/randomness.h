#pragma once

#include <string_view>

namespace credentials {

/// Whether a text is too random to be a name: 20 characters or more in which letters and digits
/// follow each other as they do in no word. Never random are numbers, hexadecimal digits (the
/// hashes of commits, images and blobs, UUIDs), and names that are made of words, versions and
/// sizes ("Meta-Llama-3.1-70B-Instruct-Q4_K_M").
bool looksRandom(std::string_view text);

/// Whether a shorter text looks like a generated password. Only for places where a password is
/// likely, because it is easily wrong.
bool looksGenerated(std::string_view text);

/// Whether it is a number of 32 or more hexadecimal digits, or a UUID. That may be a hash or a
/// key; only its name can tell.
bool isLongHexNumber(std::string_view text);

}  // namespace credentials
