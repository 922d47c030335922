#include "scanner/credentials/credential_name.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "scanner/credentials/key_tree.h"
#include "scanner/credentials/word_set.h"
#include "text/ascii.h"

namespace credentials {
namespace {

using namespace std::string_view_literals;

/// The end of a name, lower case and without separators, and what it makes of the name. Of
/// several the longest counts.
struct Ending {
  std::string_view text;
  NameKind kind;
  bool isWord = false;  ///< it must begin a word: "pat" is none in "compat"
};

constexpr NameKind kHarmless = NameKind::harmless;
constexpr NameKind kPassword = NameKind::password;
constexpr NameKind kToken = NameKind::token;
constexpr NameKind kKey = NameKind::key;
constexpr bool kWord = true;

/// A newcomer's word goes here.
constexpr Ending kEndings[] = {
    // Passwords, in several languages.
    {"password", kPassword},
    {"passwords", kPassword},
    {"passwd", kPassword},
    {"passwort", kPassword},
    {"passphrase", kPassword},
    {"passcode", kPassword},
    {"pass", kPassword},
    {"pwd", kPassword},
    {"pw", kPassword, kWord},
    {"userpw", kPassword},
    {"pswd", kPassword},
    {"psw", kPassword, kWord},
    {"kennwort", kPassword},
    {"motdepasse", kPassword},
    {"mdp", kPassword, kWord},
    {"contrasena", kPassword},
    {"senha", kPassword, kWord},
    {"wachtwoord", kPassword},
    {"haslo", kPassword, kWord},
    {"heslo", kPassword, kWord},
    {"parola", kPassword, kWord},
    {"psk", kPassword, kWord},
    {"wpapsk", kPassword},
    {"pin", NameKind::code, kWord},
    {"pincode", NameKind::code},
    {"userpin", NameKind::code},
    {"sopin", NameKind::code},
    {"puk", NameKind::code, kWord},
    {"otp", NameKind::code, kWord},
    {"totp", NameKind::code, kWord},
    {"otpcode", NameKind::code},
    {"mfacode", NameKind::code},
    {"mfa", NameKind::unclear, kWord},
    {"verificationcode", NameKind::code},
    {"accesscode", NameKind::code},
    {"securitycode", NameKind::code},
    {"recoverycode", NameKind::code},
    {"activationcode", NameKind::code},
    {"invitecode", NameKind::code},
    {"requirepass", kPassword},
    {"tosecurestring", kPassword},
    {"vncpw", kPassword},
    {"adminpw", kPassword},
    {"rootpw", kPassword},
    {"rootpass", kPassword},
    {"bindpw", kPassword},
    {"wifikey", kPassword},
    {"wifipsk", kPassword},
    {"unlockcode", NameKind::code},
    {"loginpassword", kPassword},
    {"pinauth", kPassword},
    {"storepass", kPassword},
    {"keypass", kPassword},
    {"mnemonic", kPassword},
    {"seedphrase", kPassword},
    {"recoveryphrase", kPassword},
    {"secretphrase", kPassword},
    {"memorableword", kPassword},
    // What ends like one and is none.
    {"bypass", kHarmless},
    {"askpass", kHarmless},
    {"sshaskpass", kHarmless},
    {"gitaskpass", kHarmless},
    {"sudoaskpass", kHarmless},
    {"askpassword", kHarmless},
    {"hidepass", kHarmless},
    {"passthrough", kHarmless},
    {"spin", kHarmless},
    {"thumbprint", kHarmless},
    {"roottokenid", kToken},
    {"keyid", kHarmless},
    {"tokenid", kHarmless},
    {"appid", NameKind::unclear},
    {"license", NameKind::unclear, kWord},
    {"tokenname", kHarmless},
    {"swarmkey", kToken},
    {"networkkey", kToken},
    {"joinkey", kKey},
    {"nodekey", kKey},
    {"devicekey", kToken},
    {"hostkeyalias", kHarmless},
    {"webhooksecret", kToken},
    {"rpcsecret", kToken},
    {"publishkey", kKey},
    {"ingestkey", kToken},
    {"ingestionkey", kToken},
    {"writekey", kToken},
    {"readkey", kToken},
    {"adminkey", kToken},
    {"userkey", kKey},
    {"teamkey", kKey},
    {"deploykey", kKey},
    {"sendgridkey", kToken},
    {"openaikey", kToken},
    {"stripekey", kToken},
    {"consumerkey", kToken},
    {"ddkey", kToken},
    {"datadogkey", kToken},
    {"instrumentationkey", kToken},
    {"googleplacesapikey", kToken},
    {"compass", kHarmless},
    {"encompass", kHarmless},
    {"trespass", kHarmless},
    {"surpass", kHarmless},
    {"overpass", kHarmless},
    {"onepass", kHarmless},
    {"twopass", kHarmless},
    {"singlepass", kHarmless},
    {"multipass", kHarmless},
    {"doublepass", kHarmless},
    {"firstpass", kHarmless},
    {"secondpass", kHarmless},
    {"lastpass", kHarmless},
    {"numpass", kHarmless},
    {"maxpass", kHarmless},
    {"renderpass", kHarmless},
    {"forwardpass", kHarmless},
    {"backwardpass", kHarmless},
    {"highpass", kHarmless},
    {"lowpass", kHarmless},
    {"bandpass", kHarmless},
    {"allpass", kHarmless},
    {"dropin", kHarmless},
    {"checkin", kHarmless},
    {"cpupin", kHarmless},
    {"gpiopin", kHarmless},
    {"mappin", kHarmless},
    {"cspin", kHarmless},
    {"ledpin", kHarmless},
    {"resetpin", kHarmless},
    {"oldpwd", kHarmless},
    // Tokens and secrets.
    {"token", kToken},
    {"secret", kToken},
    {"secrets", kToken},
    {"bearer", kToken},
    {"credential", kToken},
    {"credentials", kToken},
    {"creds", kToken},
    {"cred", kToken, kWord},
    {"jwt", kToken, kWord},
    {"jwts", kToken, kWord},
    {"cookie", kToken},
    {"cookies", kToken},
    {"sig", kToken, kWord},
    {"signature", NameKind::unclear},
    {"sas", kToken, kWord},
    {"sharedaccesssignature", kToken},
    {"hmac", NameKind::unclear, kWord},
    {"phpsessid", kToken},
    {"gitlabsession", kToken},
    {"jsessionid", kToken},
    {"sessionid", NameKind::unclear},
    {"sessid", NameKind::unclear},
    {"connectsid", kToken},
    {"session", NameKind::unclear, kWord},
    {"sessions", kHarmless},
    {"authcode", kToken},
    {"authorizationcode", kToken},
    {"devicecode", kToken},
    {"setupcode", kToken},
    {"rpcauth", kToken},
    {"masterauth", kToken},
    {"redisauth", kToken},
    {"rediscliauth", kToken},
    {"requireauth", NameKind::authentication},
    {"basicauth", kToken},
    {"authbasic", kToken},
    {"httpbasic", kToken},
    {"basicauthusers", kToken},
    {"apihash", kToken},
    {"passkey", kToken},
    {"keymaterial", kToken},
    {"keyhex", kToken},
    {"keybase64", kToken},
    {"httpauth", kToken},
    {"proxyauth", kToken},
    {"userauth", kToken},
    {"authcred", kToken},
    {"authconfig", kToken},
    {"authstring", kToken},
    {"authdata", kToken},
    {"authparams", kToken},
    {"authorization", kToken},
    {"auth", NameKind::authentication, kWord},
    {"auths", NameKind::authentication, kWord},
    {"authentication", NameKind::authentication, kWord},
    {"oauth", NameKind::authentication, kWord},
    {"oauth2", NameKind::authentication, kWord},
    {"pat", kKey, kWord},
    {"pats", kKey, kWord},
    {"ghpat", kToken},
    {"githubpat", kToken},
    {"gitlabpat", kToken},
    {"azurepat", kToken},
    {"accesstokens", kToken},
    {"apitokens", kToken},
    {"authtokens", kToken},
    {"bearertokens", kToken},
    {"refreshtokens", kToken},
    {"bottokens", kToken},
    {"community", kKey, kWord},
    {"communitystring", kToken},
    {"snmpcommunity", kToken},
    {"connectionstring", kHarmless},
    {"connstring", kHarmless},
    {"passin", kHarmless},
    {"passout", kHarmless},
    // Tokens of what a language model reads and writes, and tokens that are counted.
    {"tokens", kHarmless},
    {"alltoken", kHarmless},
    {"anytoken", kHarmless},
    {"audiotoken", kHarmless},
    {"bostoken", kHarmless},
    {"budgettoken", kHarmless},
    {"clstoken", kHarmless},
    {"eachtoken", kHarmless},
    {"endtoken", kHarmless},
    {"eostoken", kHarmless},
    {"eottoken", kHarmless},
    {"fimtoken", kHarmless},
    {"firsttoken", kHarmless},
    {"imagetoken", kHarmless},
    {"lasttoken", kHarmless},
    {"masktoken", kHarmless},
    {"maxtoken", kHarmless},
    {"mintoken", kHarmless},
    {"newtoken", kHarmless},
    {"nexttoken", kHarmless},
    {"numtoken", kHarmless},
    {"padtoken", kHarmless},
    {"pertoken", kHarmless},
    {"prompttoken", kHarmless},
    {"septoken", kHarmless},
    {"specialtoken", kHarmless},
    {"starttoken", kHarmless},
    {"stoptoken", kHarmless},
    {"texttoken", kHarmless},
    {"thinktoken", kHarmless},
    {"unktoken", kHarmless},
    {"videotoken", kHarmless},
    {"wordtoken", kHarmless},
    // The names of secrets, which are kept elsewhere.
    {"existingsecret", kHarmless},
    {"pullsecret", kHarmless},
    {"pullsecrets", kHarmless},
    {"tlssecret", kHarmless},
    {"httpcookie", kToken},
    // Keys: those that open something…
    {"key", kKey, kWord},
    {"apikey", kToken},
    {"apikeys", kToken},
    {"accesskey", kToken},
    {"accountkey", kToken},
    {"activationkey", kToken},
    {"aeskey", kToken},
    {"appkey", kKey},
    {"authkey", kToken},
    {"authkeys", kToken},
    {"clientkey", kKey},
    {"cryptkey", kToken},
    {"decryptionkey", kToken},
    {"enckey", kToken},
    {"encryptionkey", kToken},
    {"hmackey", kToken},
    {"integrationkey", kToken},
    {"licensekey", kToken},
    {"licencekey", kToken},
    {"masterkey", kToken},
    {"privatekey", kToken},
    {"presharedkey", kToken},
    {"productkey", kToken},
    {"recoverykey", kToken},
    {"registrationkey", kToken},
    {"rootkey", kToken},
    {"secretkey", kToken},
    {"secretaccesskey", kToken},
    {"serialkey", kToken},
    {"servicekey", kToken},
    {"sessionkey", kToken},
    {"setupkey", kToken},
    {"sharedaccesskey", kToken},
    {"sharedkey", kToken},
    {"signingkey", kKey},
    {"storagekey", kToken},
    {"streamkey", kToken},
    {"subscriptionkey", kToken},
    {"unsealkey", kToken},
    {"webhookkey", kToken},
    {"functionskey", kToken},
    {"secretid", kKey},
    {"salt", kKey, kWord},
    // … and those that something is found by, or pressed.
    {"recvkeys", kHarmless},
    {"sendkeys", kHarmless},
    {"hotkeys", kHarmless},
    {"authorizedkeys", kHarmless},
    {"answerkey", kHarmless},
    {"attributekey", kHarmless},
    {"batchkey", kHarmless},
    {"bindkey", kHarmless},
    {"cachekey", kHarmless},
    {"captionkey", kHarmless},
    {"chosenkey", kHarmless},
    {"columnkey", kHarmless},
    {"completionkey", kHarmless},
    {"configkey", kHarmless},
    {"datakey", kHarmless},
    {"datasetkey", kHarmless},
    {"dictkey", kHarmless},
    {"escapekey", kHarmless},
    {"eventkey", kHarmless},
    {"featurekey", kHarmless},
    {"fieldkey", kHarmless},
    {"filterkey", kHarmless},
    {"foreignkey", kHarmless},
    {"groupkey", kHarmless},
    {"hashkey", kHarmless},
    {"hostkey", kHarmless},
    {"hotkey", kHarmless},
    {"idempotencykey", kHarmless},
    {"imagekey", kHarmless},
    {"indexkey", kHarmless},
    {"inputkey", kHarmless},
    {"instructionkey", kHarmless},
    {"issuekey", kHarmless},
    {"itemkey", kHarmless},
    {"joinkey", kHarmless},
    {"jsonkey", kHarmless},
    {"labelkey", kHarmless},
    {"leaderkey", kHarmless},
    {"lookupkey", kHarmless},
    {"mapkey", kHarmless},
    {"messagekey", kHarmless},
    {"messageskey", kHarmless},
    {"metakey", kHarmless},
    {"metrickey", kHarmless},
    {"modifierkey", kHarmless},
    {"modkey", kHarmless},
    {"objectkey", kHarmless},
    {"orderkey", kHarmless},
    {"outputkey", kHarmless},
    {"partitionkey", kHarmless},
    {"prefixkey", kHarmless},
    {"primarykey", kHarmless},
    {"projectkey", kHarmless},
    {"promptkey", kHarmless},
    {"propertykey", kHarmless},
    {"pubkey", kHarmless},
    {"publickey", kHarmless},
    {"querykey", kHarmless},
    {"questionkey", kHarmless},
    {"rangekey", kHarmless},
    {"recordkey", kHarmless},
    {"registrykey", kHarmless},
    {"rejectedkey", kHarmless},
    {"responsekey", kHarmless},
    {"routingkey", kHarmless},
    {"rowkey", kHarmless},
    {"scrollkey", kHarmless},
    {"settingkey", kHarmless},
    {"shardkey", kHarmless},
    {"shortcutkey", kHarmless},
    {"sortkey", kHarmless},
    {"spacekey", kHarmless},
    {"statekey", kHarmless},
    {"tagkey", kHarmless},
    {"targetkey", kHarmless},
    {"textkey", kHarmless},
    {"togglekey", kHarmless},
    {"trustedkey", kHarmless},
    {"uniquekey", kHarmless},
    {"userpublickey", kHarmless},
    {"videokey", kHarmless},
    {"gpgkey", NameKind::unclear},
    {"pgpkey", NameKind::unclear},
    {"sshkey", NameKind::unclear},
    {"sslkey", NameKind::unclear},
    {"tlskey", NameKind::unclear},
    // Where a name or a token can stand, or both with a colon.
    {"webhook", NameKind::webhook},
    {"webhooks", NameKind::webhook},
    {"webhookurl", NameKind::webhook},
    {"hookurl", NameKind::webhook},
    {"webhookuri", NameKind::webhook},
    {"login", NameKind::login, kWord},
    {"user", NameKind::account},
    {"users", kHarmless},
    {"username", NameKind::account},
    {"userpwd", NameKind::account},
    {"userpass", kPassword},
    {"userpassword", kPassword},
    {"account", NameKind::account, kWord},
    // Known to be harmless, however random it looks.
    {"address", kHarmless},
    {"addr", kHarmless},
    {"alias", kHarmless},
    {"aliases", kHarmless},
    {"arch", kHarmless},
    {"arn", kHarmless},
    {"branch", kHarmless},
    {"cert", kHarmless},
    {"certificate", kHarmless},
    {"certs", kHarmless},
    {"checksum", kHarmless},
    {"cid", kHarmless},
    {"class", kHarmless},
    {"commit", kHarmless},
    {"cursor", kHarmless},
    {"destination", kHarmless},
    {"device", kHarmless},
    {"digest", kHarmless},
    {"dir", kHarmless},
    {"directory", kHarmless},
    {"display", kHarmless},
    {"domain", kHarmless},
    {"email", kHarmless},
    {"endpoint", kHarmless},
    {"env", kHarmless},
    {"etag", kHarmless},
    {"features", kHarmless},
    {"file", kHarmless},
    {"files", kHarmless},
    {"filename", kHarmless},
    {"fingerprint", kHarmless},
    {"folder", kHarmless},
    {"format", kHarmless},
    {"group", kHarmless},
    {"guid", kHarmless},
    {"handle", kHarmless},
    {"hash", kHarmless},
    {"helper", kHarmless},
    {"host", kHarmless},
    {"hostname", kHarmless},
    {"id", kHarmless},
    {"idx", kHarmless},
    {"ids", kHarmless},
    {"image", kHarmless},
    {"images", kHarmless},
    {"include", kHarmless},
    {"index", kHarmless},
    {"input", kHarmless},
    {"instance", kHarmless},
    {"integrity", kHarmless},
    {"jar", kHarmless},
    {"kind", kHarmless},
    {"label", kHarmless},
    {"labels", kHarmless},
    {"lang", kHarmless},
    {"layer", kHarmless},
    {"length", kHarmless},
    {"level", kHarmless},
    {"limit", kHarmless},
    {"location", kHarmless},
    {"metadata", kHarmless},
    {"method", kHarmless},
    {"mode", kHarmless},
    {"model", kHarmless},
    {"models", kHarmless},
    {"module", kHarmless},
    {"name", kHarmless},
    {"names", kHarmless},
    {"namespace", kHarmless},
    {"nonce", kHarmless},
    {"output", kHarmless},
    {"parent", kHarmless},
    {"path", kHarmless},
    {"paths", kHarmless},
    {"peer", kHarmless},
    {"peers", kHarmless},
    {"plugin", kHarmless},
    {"pod", kHarmless},
    {"policy", kHarmless},
    {"port", kHarmless},
    {"preferences", kHarmless},
    {"prefix", kHarmless},
    {"profile", kHarmless},
    {"project", kHarmless},
    {"prompt", kHarmless},
    {"provider", kHarmless},
    {"realm", kHarmless},
    {"recipient", kHarmless},
    {"ref", kHarmless},
    {"region", kHarmless},
    {"release", kHarmless},
    {"repo", kHarmless},
    {"repository", kHarmless},
    {"required", kHarmless},
    {"resource", kHarmless},
    {"rev", kHarmless},
    {"revision", kHarmless},
    {"role", kHarmless},
    {"root", kHarmless},
    {"scheme", kHarmless},
    {"scope", kHarmless},
    {"scopes", kHarmless},
    {"seed", kHarmless},
    {"serial", kHarmless},
    {"server", kHarmless},
    {"service", kHarmless},
    {"sha", kHarmless},
    {"sha1", kHarmless},
    {"sha256", kHarmless},
    {"sha384", kHarmless},
    {"sha512", kHarmless},
    {"md5", kHarmless},
    {"size", kHarmless},
    {"snapshot", kHarmless},
    {"sock", kHarmless},
    {"socket", kHarmless},
    {"span", kHarmless},
    {"state", kHarmless},
    {"store", kHarmless},
    {"subject", kHarmless},
    {"suffix", kHarmless},
    {"tag", kHarmless},
    {"tags", kHarmless},
    {"target", kHarmless},
    {"template", kHarmless},
    {"text", kHarmless},
    {"thread", kHarmless},
    {"timeout", kHarmless},
    {"title", kHarmless},
    {"tenant", kHarmless},
    {"tokenizer", kHarmless},
    {"trace", kHarmless},
    {"traceparent", kHarmless},
    {"trial", kHarmless},
    {"trials", kHarmless},
    {"ttl", kHarmless},
    {"type", kHarmless},
    {"types", kHarmless},
    {"uri", kHarmless},
    {"url", kHarmless},
    {"uuid", kHarmless},
    {"var", kHarmless},
    {"version", kHarmless},
    {"volume", kHarmless},
    {"wallet", kHarmless},
    {"weight", kHarmless},
    {"workspace", kHarmless},
};

/// Last words that say nothing new of what stands before them: "TOKEN_VALUE", "password-confirm".
const WordSet& neutralWords() {
  static const WordSet words(std::array{
      "b64"sv,        "base"sv,    "base64"sv,    "confirm"sv,   "confirmation"sv, "content"sv,
      "current"sv,    "data"sv,    "decoded"sv,   "default"sv,   "dev"sv,          "encoded"sv,
      "header"sv,     "hex"sv,     "literal"sv,   "live"sv,      "local"sv,        "main"sv,
      "new"sv,        "old"sv,     "plain"sv,     "plaintext"sv, "primary"sv,      "prod"sv,
      "production"sv, "raw"sv,     "read"sv,      "readonly"sv,  "repeat"sv,       "ro"sv,
      "rw"sv,         "sandbox"sv, "secondary"sv, "staging"sv,   "str"sv,          "string"sv,
      "test"sv,       "val"sv,     "value"sv,     "values"sv,    "verify"sv,       "write"sv});
  return words;
}

/// First words of options that are switches.
const WordSet& switches() {
  static const WordSet words(std::array{"ask"sv, "check"sv, "disable"sv, "enable"sv, "generate"sv,
                                        "hide"sv, "insecure"sv, "no"sv, "print"sv, "prompt"sv,
                                        "require"sv, "reset"sv, "save"sv, "show"sv, "skip"sv,
                                        "verify"sv, "with"sv, "without"sv});
  return words;
}

constexpr char lowered(char c) {
  return text::isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSeparator(char c) {
  return !text::isAlphanumeric(c);
}

/// Whether a word begins at `name[at]`: behind a separator or a digit, or where the case
/// changes ("api|Key", "API|Key").
bool beginsWord(std::string_view name, std::size_t at) {
  if (at == 0 || isSeparator(name[at - 1]) || text::isDigit(name[at - 1])) return true;
  if (!text::isUpper(name[at])) return false;
  return text::isLower(name[at - 1]) || (at + 1 < name.size() && text::isLower(name[at + 1]));
}

/// The endings as texts that are read from their end.
const KeyTree& endings() {
  static const KeyTree tree = [] {
    std::vector<std::string> reversed;
    for (const Ending& ending : kEndings) {
      reversed.emplace_back(ending.text.rbegin(), ending.text.rend());
    }
    return KeyTree({reversed.begin(), reversed.end()});
  }();
  return tree;
}

/// The kind by the longest ending of the name, or unknown.
NameKind kindByEnding(std::string_view name) {
  const KeyTree& tree = endings();
  NameKind kind = NameKind::unknown;
  KeyTree::Node node = KeyTree::kRoot;
  for (std::size_t at = name.size(); at > 0; --at) {
    if (isSeparator(name[at - 1])) continue;
    node = tree.next(node, lowered(name[at - 1]));
    if (node == KeyTree::kNowhere) break;
    const int found = tree.keyAt(node);
    if (found == KeyTree::kNoKey) continue;
    const Ending& ending = kEndings[static_cast<std::size_t>(found)];
    if (!ending.isWord || beginsWord(name, at - 1)) {
      kind = ending.kind;
    } else if (ending.text == "key") {
      kind = NameKind::unclear;  // of a word that is not known
    }
  }
  return kind;
}

/// Takes the last word off the name.
std::string_view takeLastWord(std::string_view& name) {
  while (!name.empty() && isSeparator(name.back())) name.remove_suffix(1);
  std::size_t begin = name.size();
  while (begin > 0 && !isSeparator(name[begin - 1])) {
    --begin;
    if (beginsWord(name, begin) && text::isLetter(name[begin])) break;
  }
  const std::string_view word = name.substr(begin);
  name = name.substr(0, begin);
  return word;
}

bool isKeyAlone(std::string_view name) {
  while (!name.empty() && isSeparator(name.front())) name.remove_prefix(1);
  while (!name.empty() && isSeparator(name.back())) name.remove_suffix(1);
  return text::equalsLowered(name, "key");
}

std::string_view withoutNumber(std::string_view name) {
  while (!name.empty() && (text::isDigit(name.back()) || isSeparator(name.back()))) {
    name.remove_suffix(1);
  }
  return name;
}

using PairRow = std::array<bool, 32>;

/// Two letters of which one pair stands in nearly every word for a credential: most names have
/// none, so that no word of theirs need be looked at.
constexpr auto kTellingPairs = [] {
  std::array<PairRow, 32> pairs{};
  for (const std::string_view pair :
       {"ke"sv, "pa"sv, "pw"sv, "wd"sv, "cr"sv, "au"sv, "jw"sv, "oo"sv, "sk"sv, "ss"sv}) {
    pairs[pair[0] & 31][pair[1] & 31] = true;
  }
  return pairs;
}();

bool holdsTellingPair(std::string_view name) {
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (kTellingPairs[name[i - 1] & 31][name[i] & 31]) return true;
  }
  return false;
}

}  // namespace

NameKind kindOf(std::string_view name) {
  constexpr std::size_t kLongestName = 80;
  constexpr int kMostWords = 3;
  if (name.size() > kLongestName) name.remove_prefix(name.size() - kLongestName);
  if (isKeyAlone(name)) return NameKind::anyKey;
  NameKind kind = kindByEnding(name);
  if (kind != NameKind::unknown) return kind;
  if (!holdsTellingPair(name)) return NameKind::unknown;
  name = withoutNumber(name);
  // A credential that something is said of, in words that are not known.
  bool isSure = true;
  for (int word = 0; word < kMostWords && !name.empty(); ++word) {
    kind = kindByEnding(name);
    if (kind == NameKind::harmless) return isSure ? kind : NameKind::unknown;
    if (kind != NameKind::unknown) return isSure ? kind : NameKind::unclear;
    isSure = neutralWords().holds(takeLastWord(name)) && isSure;
  }
  return NameKind::unknown;
}

bool isSwitch(std::string_view name) {
  while (!name.empty() && isSeparator(name.front())) name.remove_prefix(1);
  const auto end = std::find_if(name.begin(), name.end(), isSeparator);
  return switches().holds(name.substr(0, static_cast<std::size_t>(end - name.begin())));
}

}  // namespace credentials
