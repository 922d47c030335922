#include "scanner/credentials/harmless_values.h"

#include <algorithm>
#include <array>

#include "scanner/credentials/randomness.h"
#include "scanner/credentials/value_bounds.h"
#include "scanner/credentials/word_set.h"
#include "text/ascii.h"
#include "text/contains.h"

namespace credentials {
namespace {

using namespace std::string_view_literals;

const WordSet& plainWords() {
  static const WordSet words(std::array{
      "-"sv,        "always"sv,  "ask"sv,       "auto"sv,      "default"sv, "disable"sv,
      "disabled"sv, "empty"sv,   "enable"sv,    "enabled"sv,   "env"sv,     "false"sv,
      "file"sv,     "hidden"sv,  "if-needed"sv, "ignore"sv,    "inherit"sv, "interactive"sv,
      "masked"sv,   "missing"sv, "never"sv,     "nil"sv,       "no"sv,      "none"sv,
      "null"sv,     "off"sv,     "on"sv,        "optional"sv,  "prompt"sv,  "redacted"sv,
      "required"sv, "stdin"sv,   "true"sv,      "undefined"sv, "unset"sv,   "value"sv,
      "yes"sv,      "error"sv,   "warn"sv,      "remotessh"sv});
  return words;
}

/// Endings of file names.
const WordSet& fileEndings() {
  static const WordSet words(std::array{
      "asc"sv,      "bin"sv,        "cer"sv,  "cfg"sv,    "conf"sv, "crt"sv,        "csr"sv,
      "csv"sv,      "db"sv,         "der"sv,  "enc"sv,    "env"sv,  "gpg"sv,        "ini"sv,
      "jks"sv,      "js"sv,         "json"sv, "kdbx"sv,   "key"sv,  "keychain"sv,   "keychain-db"sv,
      "keystore"sv, "kubeconfig"sv, "log"sv,  "ovpn"sv,   "p12"sv,  "p7b"sv,        "p8"sv,
      "pem"sv,      "pfx"sv,        "php"sv,  "plist"sv,  "ppk"sv,  "properties"sv, "pub"sv,
      "py"sv,       "sh"sv,         "sock"sv, "sqlite"sv, "toml"sv, "txt"sv,        "vault"sv,
      "xml"sv,      "yaml"sv,       "yml"sv});
  return words;
}

/// Beginnings of values that only say where the secret is.
const WordSet& references() {
  static const WordSet words(std::array{
      "${"sv,         "$("sv,        "{{"sv,      "%("sv,    "<("sv,          "env:"sv,
      "file:"sv,      "fd:"sv,       "vault:"sv,  "op://"sv, "arn:"sv,        "ssm:"sv,
      "secretref:"sv, "keychain:"sv, "cmd:"sv,    "ref+"sv,  "process.env"sv, "os.environ"sv,
      "os.getenv"sv,  "getenv("sv,   "env["sv,    "enc["sv,  "secrets."sv,    "var."sv,
      "local."sv,     "data."sv,     "module."sv, "id="sv,   "type="sv,       "src="sv,
      "getpass"sv,    "input("sv,    "your-"sv,   "your_"sv, "<your"sv,       "literal:env"sv});
  return words;
}

/// Text that only regular expressions hold.
constexpr std::array kPatternParts{".*"sv, ".+"sv, "\\s"sv, "\\w"sv, "\\d"sv, "[^"sv, "(?"sv};

bool isVariableCharacter(char c) {
  return text::isUpper(c) || text::isDigit(c) || c == '_';
}

/// "$TOKEN", "%TOKEN%", "@file", "<token>", "{token}"
bool refersElsewhere(std::string_view value) {
  if (references().holdsBeginningOf(value)) return true;
  const std::string_view rest = value.substr(1);
  switch (value.front()) {
    case '$':
      return !rest.empty() && !text::isDigit(rest.front()) &&
             std::ranges::all_of(rest, isVariableCharacter);
    case '%':
      return rest == "s" || rest == "d" || (rest.size() > 1 && rest.back() == '%');
    case '@':
      return rest == "-" || isPath(rest) || references().holdsBeginningOf(rest) ||
             std::ranges::all_of(rest, text::isLower);
    case '<':
      return value.back() == '>';
    case '{':
      return value.back() == '}' &&
             std::ranges::all_of(rest.substr(0, rest.size() - 1), isNameCharacter);
    default:
      return false;
  }
}

/// "***", "•••", "xxxx", "...": one character, again and again.
bool isBlackedOut(std::string_view value) {
  constexpr std::size_t kLongest = 64;
  if (value.size() > kLongest) return false;
  if (!text::isAlphanumeric(value.front()) && !isSpecial(value.front()) && value.front() > ' ') {
    return std::ranges::all_of(value, [&](char c) { return c == value.front(); });
  }
  if (value.substr(0, 3) == "•") return true;
  return (value.front() == '*' || value.front() == 'x' || value.front() == 'X') &&
         value.size() >= 2 &&
         std::ranges::all_of(value, [&](char c) { return c == value.front(); });
}

/// "/nix/store/…", "/var/lib/…": a path, even if random text follows.
bool isBelowKnownRoot(std::string_view path) {
  static const WordSet roots(std::array{
      "/app/"sv,      "/applications/"sv, "/bin/"sv,   "/boot/"sv, "/data/"sv,    "/dev/"sv,
      "/etc/"sv,      "/gnu/"sv,          "/home/"sv,  "/lib/"sv,  "/lib64/"sv,   "/library/"sv,
      "/media/"sv,    "/mnt/"sv,          "/nix/"sv,   "/opt/"sv,  "/private/"sv, "/proc/"sv,
      "/root/"sv,     "/run/"sv,          "/sbin/"sv,  "/snap/"sv, "/srv/"sv,     "/sys/"sv,
      "/system/"sv,   "/tmp/"sv,          "/users/"sv, "/usr/"sv,  "/var/"sv,     "/volumes/"sv,
      "/workspace/"sv});
  return roots.holdsBeginningOf(path);
}

}  // namespace

bool isReference(std::string_view value) {
  value = value.substr(0, kLongestLook);
  return !value.empty() && (refersElsewhere(value) || isBlackedOut(value));
}

bool isNothing(std::string_view value) {
  value = value.substr(0, kLongestLook);
  return value.empty() || plainWords().holds(value) || isBlackedOut(value) ||
         refersElsewhere(value) || isPath(value) ||
         std::ranges::any_of(kPatternParts, [&](auto part) { return text::contains(value, part); });
}

bool isPath(std::string_view text) {
  text = text.substr(0, kLongestLook);
  if (text.empty() || std::ranges::any_of(text, text::isWhiteSpace)) return false;
  const bool isDrive = text.size() > 2 && text::isLetter(text[0]) && text[1] == ':' &&
                       (text[2] == '\\' || text[2] == '/');
  if (isDrive || text == "~" || text.starts_with("./") || text.starts_with("../") ||
      text.starts_with("~/")) {
    return true;
  }
  const auto dot = text.rfind('.');
  if (dot != std::string_view::npos && fileEndings().holds(text.substr(dot + 1))) return true;
  if (text.front() == '/') {
    return !looksRandom(text) || text::contains(text.substr(1), "/.") || isBelowKnownRoot(text);
  }
  // "run/secrets/token"
  const auto isPathCharacter = [](char c) {
    return text::isLower(c) || text::isDigit(c) || c == '/' || c == '-' || c == '_' || c == '.';
  };
  return text.find('/') > 1 && text::contains(text, "/") &&
         std::ranges::all_of(text, isPathCharacter);
}

bool isTag(std::string_view value) {
  constexpr std::array kTags{"latest"sv, "stable"sv, "edge"sv,    "main"sv, "master"sv, "dev"sv,
                             "prod"sv,   "alpine"sv, "nightly"sv, "slim"sv, "test"sv,   "beta"sv};
  return std::ranges::find(kTags, value) != kTags.end();
}

}  // namespace credentials
