#include "scanner/credentials/credential_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/ascii.h"

namespace {

using namespace std::string_view_literals;

bool endsWith(std::string_view word, std::string_view ending) {
  return word.size() >= ending.size() &&
         text::equalsLowered(word.substr(word.size() - ending.size()), ending);
}

template <std::size_t N>
bool isOneOf(std::string_view word, const std::array<std::string_view, N>& list) {
  return std::any_of(list.begin(), list.end(),
                     [&](auto entry) { return text::equalsLowered(word, entry); });
}

/// Each of these is a credential wherever it stands in the name.
constexpr std::array kCredentials{"token"sv,      "auth"sv,        "pwd"sv,    "bearer"sv,
                                  "credential"sv, "credentials"sv, "sshpass"sv};

/// And so is a word that ends in one of these: "pgpassword", "clientsecret".
constexpr std::array kEndings{"password"sv,  "passwords"sv,    "passwd"sv,    "passphrase"sv,
                              "apikey"sv,    "apikeys"sv,      "secret"sv,    "secrets"sv,
                              "authtoken"sv, "apitoken"sv,     "accesskey"sv, "accesstoken"sv,
                              "secretkey"sv, "authorization"sv};

/// A last word that makes the name one of something about a credential.
constexpr std::array kAbout{
    "age"sv,      "alg"sv,      "algorithm"sv,   "backend"sv,    "budget"sv,    "cache"sv,
    "cert"sv,     "check"sv,    "class"sv,       "cmd"sv,        "column"sv,    "command"sv,
    "count"sv,    "days"sv,     "dim"sv,         "dims"sv,       "dir"sv,       "directory"sv,
    "disabled"sv, "domain"sv,   "drop"sv,        "dropout"sv,    "embedding"sv, "embeddings"sv,
    "enabled"sv,  "endpoint"sv, "env"sv,         "expiration"sv, "expiry"sv,    "fd"sv,
    "field"sv,    "file"sv,     "files"sv,       "format"sv,     "group"sv,     "helper"sv,
    "host"sv,     "hours"sv,    "id"sv,          "ids"sv,        "idx"sv,       "index"sv,
    "interval"sv, "kind"sv,     "len"sv,         "length"sv,     "level"sv,     "lifetime"sv,
    "limit"sv,    "limits"sv,   "location"sv,    "manager"sv,    "mask"sv,      "merging"sv,
    "method"sv,   "minutes"sv,  "mode"sv,        "module"sv,     "name"sv,      "names"sv,
    "path"sv,     "paths"sv,    "plugin"sv,      "policy"sv,     "pooling"sv,   "port"sv,
    "prefix"sv,   "prob"sv,     "probability"sv, "provider"sv,   "rate"sv,      "ratio"sv,
    "realm"sv,    "refresh"sv,  "required"sv,    "role"sv,       "rotation"sv,  "scheme"sv,
    "scope"sv,    "scopes"sv,   "seconds"sv,     "server"sv,     "service"sv,   "shift"sv,
    "size"sv,     "sock"sv,     "socket"sv,      "stats"sv,      "stdin"sv,     "store"sv,
    "strategy"sv, "suffix"sv,   "template"sv,    "timeout"sv,    "ttl"sv,       "type"sv,
    "types"sv,    "uri"sv,      "url"sv,         "usage"sv,      "user"sv,      "username"sv,
    "var"sv,      "variable"sv, "version"sv,     "weight"sv};

/// A first word that makes the name a switch, which has no value.
constexpr std::array kSwitches{"ask"sv,     "disable"sv, "enable"sv, "no"sv,
                               "require"sv, "skip"sv,    "without"sv};

/// Words before "token" for what a language model reads and writes.
constexpr std::array kModelTokens{
    "all"sv,   "any"sv,  "bos"sv,   "budget"sv, "cls"sv,   "each"sv,   "end"sv,  "eos"sv,
    "eot"sv,   "fim"sv,  "first"sv, "image"sv,  "last"sv,  "mask"sv,   "max"sv,  "min"sv,
    "new"sv,   "next"sv, "num"sv,   "pad"sv,    "per"sv,   "prompt"sv, "sep"sv,  "special"sv,
    "start"sv, "stop"sv, "think"sv, "unk"sv,    "video"sv, "word"sv,   "audio"sv};

/// Words before "key" for a field that data are found by.
constexpr std::array kDataKeys{
    "answer"sv,     "batch"sv,    "cache"sv,     "caption"sv,  "chosen"sv,  "column"sv,
    "completion"sv, "data"sv,     "dataset"sv,   "dict"sv,     "feature"sv, "field"sv,
    "foreign"sv,    "group"sv,    "image"sv,     "index"sv,    "input"sv,   "instruction"sv,
    "join"sv,       "json"sv,     "label"sv,     "lookup"sv,   "message"sv, "messages"sv,
    "metric"sv,     "output"sv,   "partition"sv, "primary"sv,  "prompt"sv,  "public"sv,
    "query"sv,      "question"sv, "rejected"sv,  "response"sv, "routing"sv, "shard"sv,
    "sort"sv,       "state"sv,    "target"sv,    "text"sv,     "video"sv};

/// Words before "tokens": the plural is a credential only with one of these.
constexpr std::array kTokenOwners{"access"sv, "api"sv, "auth"sv, "bearer"sv, "refresh"sv};

/// Words before a last "pass", which is a password only with one of these.
constexpr std::array kPassOwners{"account"sv, "admin"sv,    "auth"sv,  "database"sv, "db"sv,
                                 "ftp"sv,     "http"sv,     "login"sv, "mail"sv,     "mysql"sv,
                                 "pg"sv,      "postgres"sv, "proxy"sv, "redis"sv,    "root"sv,
                                 "smtp"sv,    "ssh"sv,      "user"sv};

enum class Split { atSigns, atCaseToo };

bool isSign(char c) {
  return c == '-' || c == '_' || c == '.';
}

/// Whether a word ends before `name[at]`: "api|Key", "API|Key".
bool caseChanges(std::string_view name, std::size_t at) {
  if (!text::isUpper(name[at])) return false;
  const char before = name[at - 1];
  return text::isLower(before) || text::isDigit(before) ||
         (text::isUpper(before) && at + 1 < name.size() && text::isLower(name[at + 1]));
}

/// Takes the first word off `name`; empty when none is left. Numbers at its end do not count.
std::string_view takeWord(std::string_view& name, Split split) {
  while (!name.empty() && isSign(name.front())) name.remove_prefix(1);
  std::size_t end = std::min<std::size_t>(1, name.size());
  while (end < name.size() && !isSign(name[end]) &&
         (split == Split::atSigns || !caseChanges(name, end))) {
    ++end;
  }
  std::string_view word = name.substr(0, end);
  name.remove_prefix(end);
  while (word.size() > 1 && text::isDigit(word.back())) word.remove_suffix(1);
  return word;
}

bool isCredentialWord(std::string_view word, std::string_view before) {
  if (text::equalsLowered(word, "token")) return !isOneOf(before, kModelTokens);
  if (text::equalsLowered(word, "tokens")) return isOneOf(before, kTokenOwners);
  if (text::equalsLowered(word, "key") || text::equalsLowered(word, "keys"))
    return text::equalsLowered(before, "api");
  return isOneOf(word, kCredentials) ||
         std::any_of(kEndings.begin(), kEndings.end(),
                     [&](auto ending) { return endsWith(word, ending); });
}

bool isCredentialLastWord(std::string_view word, std::string_view before) {
  if (text::equalsLowered(word, "key")) return !isOneOf(before, kDataKeys);
  return text::equalsLowered(word, "pass") && isOneOf(before, kPassOwners);
}

bool wordsNameCredential(std::string_view name, Split split) {
  bool found = false;
  std::string_view before;
  std::string_view last = takeWord(name, split);
  if (isOneOf(last, kSwitches)) return false;
  while (true) {
    found = found || isCredentialWord(last, before);
    const std::string_view next = takeWord(name, split);
    if (next.empty()) break;
    before = last;
    last = next;
  }
  return isCredentialLastWord(last, before) || (found && !isOneOf(last, kAbout));
}

}  // namespace

bool namesCredential(std::string_view name) {
  if (wordsNameCredential(name, Split::atSigns)) return true;
  return std::any_of(name.begin(), name.end(), text::isUpper) &&
         wordsNameCredential(name, Split::atCaseToo);
}
