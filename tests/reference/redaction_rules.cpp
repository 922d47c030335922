#include <utility>

#include "reference/process_rules.h"
#include "reference/text_rules.h"

namespace reference {
namespace {

/// How long the white space character at `position` is; 0: there is none.
std::size_t whiteSpace(const std::string& text, std::size_t position) {
  for (const std::string space :
       {"\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
        "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
        "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"}) {
    if (text.compare(position, space.size(), space) == 0) return space.size();
  }
  return 0;
}

/// How long `word` is at `position` in any case; 0: it isn't there. Two letters of other
/// scripts count as k and s too.
std::size_t wordAt(const std::string& text, std::size_t position, const std::string& word) {
  std::size_t end = position;
  for (const char letter : word) {
    if (end < text.size() && lower(text.substr(end, 1))[0] == letter) {
      end += 1;
    } else if (letter == 'k' && text.compare(end, 3, "\u212A") == 0) {
      end += 3;
    } else if (letter == 's' && text.compare(end, 2, "\u017F") == 0) {
      end += 2;
    } else {
      return 0;
    }
  }
  return end - position;
}

/// Where an option named like a secret and its value end; `position` when there is none.
std::size_t secretEnd(const std::string& text, std::size_t position) {
  for (const std::string word : {"--apikey", "--api_key", "--api-key", "--token", "--password",
                                 "--secret", "--auth", "--key"}) {
    const std::size_t length = wordAt(text, position, word);
    if (length == 0) continue;
    std::size_t end = position + length;
    const std::size_t spaces = end;
    while (end < text.size() && whiteSpace(text, end) > 0) end += whiteSpace(text, end);
    if (end == spaces || end == text.size()) continue;
    while (end < text.size() && whiteSpace(text, end) == 0) ++end;
    return end;
  }
  return position;
}

}  // namespace

std::string redactSecrets(const std::string& commandLine) {
  std::string redacted;
  for (std::size_t i = 0; i < commandLine.size();) {
    const std::size_t end = secretEnd(commandLine, i);
    if (end == i) {
      redacted += commandLine[i++];
    } else {
      redacted += "--api-key •••";
      i = end;
    }
  }
  return redacted;
}

}  // namespace reference
