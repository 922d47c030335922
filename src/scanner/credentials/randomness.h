#pragma once

#include <string_view>

namespace credentials {

/// Whether nobody would call anything by this text: 20 characters or more in which letters and
/// digits follow each other as they do in no word. Not random are numbers, hexadecimal digits
/// (the hashes of commits, images and blobs, UUIDs), and names that are put together from
/// words, versions and sizes ("Meta-Llama-3.1-70B-Instruct-Q4_K_M").
bool looksRandom(std::string_view text);

/// Whether a shorter text looks drawn at random: a generated password. Only for places where a
/// password may stand.
bool looksGenerated(std::string_view text);

/// Whether it is a long number in hexadecimal digits (32 or more), or a UUID: a hash or a key,
/// which only a name beside it tells.
bool isLongHexNumber(std::string_view text);

}  // namespace credentials
