#include "scanner/credentials/looks_secret.h"

#include <algorithm>
#include <array>

#include "scanner/credentials/harmless_values.h"
#include "scanner/credentials/randomness.h"
#include "scanner/credentials/value_bounds.h"
#include "scanner/credentials/word_set.h"
#include "text/ascii.h"
#include "text/contains.h"

namespace credentials {
namespace {

using namespace std::string_view_literals;

/// Names of methods of authentication.
const WordSet& mechanisms() {
  static const WordSet words(std::array{"adc"sv,           "anonymous"sv,
                                        "any"sv,           "apikey"sv,
                                        "aws"sv,           "azure"sv,
                                        "basic"sv,         "bearer"sv,
                                        "browser"sv,       "cert"sv,
                                        "certificate"sv,   "clientcert"sv,
                                        "cookie"sv,        "cram-md5"sv,
                                        "custom"sv,        "device"sv,
                                        "digest"sv,        "external"sv,
                                        "form"sv,          "gcp"sv,
                                        "github"sv,        "gitlab"sv,
                                        "google"sv,        "gss"sv,
                                        "gssapi"sv,        "htpasswd"sv,
                                        "iam"sv,           "ident"sv,
                                        "jwt"sv,           "kerberos"sv,
                                        "key"sv,           "ldap"sv,
                                        "local"sv,         "login"sv,
                                        "md5"sv,           "mtls"sv,
                                        "mutual"sv,        "mysql_native_password"sv,
                                        "negotiate"sv,     "noauth"sv,
                                        "ntlm"sv,          "oauth"sv,
                                        "oauth2"sv,        "oidc"sv,
                                        "open"sv,          "pam"sv,
                                        "password"sv,      "pat"sv,
                                        "peer"sv,          "plain"sv,
                                        "proxy"sv,         "public"sv,
                                        "radius"sv,        "saml"sv,
                                        "sasl"sv,          "scram"sv,
                                        "scram-sha-1"sv,   "scram-sha-256"sv,
                                        "scram-sha-512"sv, "session"sv,
                                        "sha1"sv,          "sha256"sv,
                                        "sha384"sv,        "sha512"sv,
                                        "sha"sv,           "aes"sv,
                                        "des"sv,           "shared"sv,
                                        "simple"sv,        "spnego"sv,
                                        "ssh"sv,           "ssl"sv,
                                        "sso"sv,           "system"sv,
                                        "tls"sv,           "token"sv,
                                        "trust"sv,         "user"sv,
                                        "webhook"sv,       "wpa-eap"sv,
                                        "wpa-psk"sv,       "wpa2"sv,
                                        "wpa3"sv,          "x509"sv});
  return words;
}

/// Beginnings of public keys.
const WordSet& publicKeys() {
  static const WordSet words(
      std::array{"age1"sv,   "aaaac3nza"sv, "aaaab3nza"sv, "aaaae2vjz"sv, "aaaagnna"sv, "rwq"sv,
                 "rwr"sv,    "rwt"sv,       "pk_"sv,       "pk-"sv,       "pub"sv,      "npub1"sv,
                 "xpub"sv,   "sha256-"sv,   "sha384-"sv,   "sha512-"sv,   "sha256:"sv,  "ocid1."sv,
                 "did:"sv,   "bafy"sv,      "qm"sv,        "magnet:"sv,   "eyj"sv,      "urn:"sv,
                 "pk.eyj"sv, "crsk"sv,      "gpu-"sv,      "mig-"sv,      "waaaaaaa"sv});
  return words;
}

constexpr std::array kSentenceWords{" the "sv,  " is "sv,  " to "sv,   " for "sv, " and "sv,
                                    " not "sv,  " was "sv, " has "sv,  " of "sv,  " in "sv,
                                    " on "sv,   " a "sv,   " with "sv, " or "sv,  " when "sv,
                                    " from "sv, " are "sv, " it "sv};

bool all(std::string_view text, auto test) {
  return std::ranges::all_of(text, test);
}
bool any(std::string_view text, auto test) {
  return std::ranges::any_of(text, test);
}

/// A number with or without a sign, a fraction or a unit: "512", "0.5", "4k", "30s".
bool isNumber(std::string_view value) {
  if (value.front() == '-' || value.front() == '+') value.remove_prefix(1);
  if (value.empty() || !text::isDigit(value.front())) return false;
  while (value.size() > 1 && text::isLetter(value.back()) &&
         !text::isLetter(value[value.size() - 2])) {
    value.remove_suffix(1);
  }
  return all(value, [](char c) { return text::isDigit(c) || c == '.' || c == ',' || c == '_'; });
}

std::size_t digitCount(std::string_view value) {
  return static_cast<std::size_t>(std::ranges::count_if(value, text::isDigit));
}

bool isUrl(std::string_view value) {
  const auto colon = value.find(':');
  return colon != std::string_view::npos && value.substr(colon, 3) == "://" &&
         all(value.substr(0, colon), isNameCharacter);
}

/// Whether a URL has a path.
bool isUrlWithPath(std::string_view value) {
  const auto slash = value.find('/', value.find("://") + 3);
  return slash != std::string_view::npos && slash + 1 < value.size();
}

/// "oauth2-proxy": names a way to authenticate, and is no credential itself.
bool isLowerWord(std::string_view value) {
  constexpr std::size_t kShortest = 4;
  return value.size() >= kShortest &&
         all(value, [](char c) { return text::isLower(c) || c == '-' || c == '_' || c == '2'; });
}

/// The id of a key: the last 4 or 8 bytes of its fingerprint, or all 20.
bool isKeyId(std::string_view value) {
  if (value.starts_with("0x")) value.remove_prefix(2);
  return (value.size() == 8 || value.size() == 16 || value.size() == 40) &&
         all(value, [](char c) { return text::isHexDigit(c) && !text::isLower(c); });
}

/// Whether this looks like a key that opens something, and not like one to sort or find by.
bool looksLikeKeysValue(std::string_view value) {
  if (isKeyId(value)) return false;
  if (any(value, text::isWhiteSpace)) return false;
  constexpr std::size_t kLongestWord = 15;
  const bool hasLetter = any(value, text::isLetter);
  const bool hasDigit = any(value, text::isDigit);
  if (hasLetter && hasDigit && value.find('+') == std::string_view::npos) return true;
  if (value.find_first_of("*?") != std::string_view::npos) return false;  // a pattern
  return looksLikeKey(value) || any(value, isSpecial) ||
         (value.size() > kLongestWord && !text::contains(value, ",") &&
          (hasDigit || any(value, text::isUpper)));
}

/// A field to sort or look up by, or a key to press: "2", "3,3nr", "name", "ctrl+c", "F5".
bool isSortField(std::string_view value) {
  static const WordSet kFields(std::array{
      "color"sv, "count"sv,  "ctrl"sv,     "date"sv,  "email"sv,  "enter"sv,     "escape"sv,
      "esc"sv,   "field"sv,  "id"sv,       "index"sv, "key"sv,    "label"sv,     "lang"sv,
      "mtime"sv, "name"sv,   "path"sv,     "price"sv, "return"sv, "score"sv,     "size"sv,
      "space"sv, "status"sv, "tab"sv,      "text"sv,  "time"sv,   "timestamp"sv, "title"sv,
      "type"sv,  "user"sv,   "username"sv, "uuid"sv,  "version"sv});
  if (kFields.holds(value) || value.find('+') != std::string_view::npos) return true;
  const bool isFunctionKey = value.size() <= 3 && (value[0] == 'F' || value[0] == 'f') &&
                             all(value.substr(1), text::isDigit) && value.size() > 1;
  const bool isColumns = text::isDigit(value.front()) && value.size() <= 12 &&
                         value.find_first_of(",.") != std::string_view::npos;
  const bool isColumn = text::isDigit(value.front()) && value.size() <= 4;
  return isFunctionKey || isColumns || isColumn;
}

/// "host.example.com", "host:8080", "10.0.0.1", "v1.2.3", "name@host"
bool isAddressOrVersion(std::string_view text) {
  if (text::contains(text, "@")) return false;
  const auto dot = text.rfind('.');
  const auto colon = text.rfind(':');
  if (colon != std::string_view::npos && colon + 1 < text.size() &&
      all(text.substr(colon + 1), text::isDigit)) {
    return true;
  }
  if (dot == std::string_view::npos || dot + 1 == text.size()) return false;
  const std::string_view ending = text.substr(dot + 1);
  return all(ending, text::isLower) || all(ending, text::isDigit);
}

/// "web-5c7d9f8b6-zx8kp": Kubernetes gives pods random ends, made of letters that form no words.
bool isPodName(std::string_view text) {
  constexpr std::size_t kEnd = 5;
  if (text.size() < kEnd + 7 || text[text.size() - kEnd - 1] != '-') return false;
  constexpr std::string_view kDrawn = "bcdfghjklmnpqrstvwxz2456789";
  const std::string_view end = text.substr(text.size() - kEnd);
  const bool isDrawn = all(end, [&](char c) { return kDrawn.find(c) != std::string_view::npos; });
  return isDrawn && text::isLower(text.front()) &&
         all(text, [](char c) { return text::isLower(c) || text::isDigit(c) || c == '-'; });
}

}  // namespace

bool mayBeSecret(std::string_view value, NameKind kind) {
  if (kind == NameKind::harmless || kind == NameKind::account) return false;
  value = value.substr(0, kLongestLook);
  // Checked first because it decides nearly all values: most are of this kind, and few look
  // random.
  if (kind == NameKind::unknown && !looksRandom(value)) return false;
  if (isNothing(value)) return false;
  constexpr std::size_t kShortestNumericPassword = 3;
  constexpr std::size_t kShortestNumericToken = 6;
  constexpr std::size_t kShortestCode = 4;
  switch (kind) {
    case NameKind::password:
      return !(isNumber(value) && digitCount(value) < kShortestNumericPassword);
    case NameKind::code:
      return digitCount(value) > 0 && value.size() >= kShortestCode &&
             !any(value, text::isWhiteSpace);
    case NameKind::webhook:
      return isUrl(value) ? isUrlWithPath(value) : looksLikeKey(value);
    case NameKind::authentication:
      if (mechanisms().holds(value) || isLowerWord(value)) return false;
      [[fallthrough]];
    case NameKind::token:
      return !isUrl(value) && !(isNumber(value) && digitCount(value) < kShortestNumericToken);
    case NameKind::key:
      return !isUrl(value) && !isNumber(value) && looksLikeKeysValue(value);
    case NameKind::anyKey:
      return !isUrl(value) && !isNumber(value) && !isSortField(value);
    case NameKind::login:
      return looksLikeKey(value);
    case NameKind::account:
      return false;
    case NameKind::unclear:
      if (value.starts_with("sha256=")) value.remove_prefix(value.find('=') + 1);
      return looksSecret(value) || looksRandom(value) ||
             (isLongHexNumber(value) && !text::contains(value, "-"));
    case NameKind::unknown:
      return !any(value, text::isWhiteSpace) && !isUrl(value) &&
             !publicKeys().holdsBeginningOf(value);
    case NameKind::harmless:
      break;
  }
  return false;
}

bool looksSecret(std::string_view text) {
  text = text.substr(0, kLongestLook);
  constexpr std::size_t kShortest = 7;
  if (text.size() < kShortest) return false;
  const std::size_t digits = digitCount(text);
  if (digits == 0 || !any(text, text::isLetter) || any(text, text::isWhiteSpace)) return false;
  if (isNothing(text) || isUrl(text) || isNumber(text) || isAddressOrVersion(text)) return false;
  if (isPodName(text)) return false;
  if (any(text, isSpecial)) return true;
  const bool isMixed = any(text, text::isUpper) && any(text, text::isLower);
  if (!isMixed && all(text, [](char c) { return text::isHexDigit(c) || c == '-'; })) return false;
  std::size_t turns = 0;  // changes between letters and digits
  for (std::size_t i = 1; i < text.size(); ++i) {
    turns += (text::isLetter(text[i - 1]) && text::isDigit(text[i])) ||
             (text::isDigit(text[i - 1]) && text::isLetter(text[i]));
  }
  return isMixed ? turns >= 2 || digits >= 4 : turns >= 4 && text.size() >= 10;
}

bool looksLikeKey(std::string_view text) {
  return looksRandom(text) || isLongHexNumber(text);
}

bool looksLikeOption(std::string_view text) {
  if (text.size() < 2 || text[0] != '-') return false;
  constexpr std::size_t kLongestShortOption = 4;
  if (text[1] == '-') return text.size() == 2 || text::isLetter(text[2]);
  return text::isLetter(text[1]) && text.size() <= kLongestShortOption;
}

bool isScheme(std::string_view word) {
  static const WordSet schemes(
      std::array{"apikey"sv, "basic"sv, "bearer"sv, "digest"sv, "oauth"sv, "token"sv});
  return schemes.holds(word);
}

bool looksEncoded(std::string_view text) {
  if (text.size() < 8 || text.size() % 4 != 0) return false;
  const auto isAllowed = [](char c) {
    return text::isAlphanumeric(c) || c == '+' || c == '/' || c == '=';
  };
  text = text.substr(0, kLongestLook);
  return all(text, isAllowed) && any(text.substr(1), [](char c) { return !text::isLower(c); });
}

bool isProse(std::string_view text) {
  text = text.substr(0, kLongestLook);
  return std::ranges::any_of(kSentenceWords, [&](auto word) { return text::contains(text, word); });
}

}  // namespace credentials
