#include "frontends/terminal/character_set.h"

#include <langinfo.h>

#include <clocale>
#include <cstdlib>

#include "text/ascii.h"

namespace terminal {
namespace {

/// The locale that counts for characters; "" for none.
std::string_view namedLocale() {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

bool isUtf8Now() {
  return std::string_view(nl_langinfo(CODESET)) == "UTF-8";
}

}  // namespace

bool takeCharacterSet() {
  std::setlocale(LC_CTYPE, "");
  if (!isUtf8Now() && namesUtf8(namedLocale())) std::setlocale(LC_CTYPE, "C.UTF-8");
  return isUtf8Now();
}

bool namesUtf8(std::string_view locale) {
  const std::size_t dot = locale.find('.');
  if (dot == std::string_view::npos) return false;
  std::string_view set = locale.substr(dot + 1);
  set = set.substr(0, set.find('@'));
  return text::equalsLowered(set, "utf-8") || text::equalsLowered(set, "utf8");
}

}  // namespace terminal
