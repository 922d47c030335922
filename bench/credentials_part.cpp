#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "cpu_clock.h"
#include "parts.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/credentials/named_credentials.h"
#include "scanner/credentials/program_credentials.h"
#include "scanner/credentials/token_formats.h"
#include "scanner/credentials/url_credentials.h"
#include "scanner/process_scanner.h"

namespace bench {
namespace {

constexpr std::size_t kSize = 64 << 10;

/// What a text is made of, again and again, that some search has the most to do with.
constexpr std::string_view kPieces[] = {"a=",
                                        "a: ",
                                        "a:",
                                        "token=",
                                        "token:",
                                        "--token ",
                                        "-a ",
                                        "\"a\":",
                                        "\"token\": \"",
                                        "'",
                                        "\"",
                                        "eyJ-",
                                        "sk-a-",
                                        "sk-",
                                        "://a:b@",
                                        "://",
                                        "http://h/",
                                        "ghp_",
                                        "Bearer ",
                                        "basic ",
                                        "a.b.c.",
                                        "12345678:A",
                                        ".",
                                        "AAAA~",
                                        "-us",
                                        "-----BEGIN ",
                                        "a b ",
                                        "mysql -p",
                                        "curl -u a:b ",
                                        "echo x | sudo -S ",
                                        "password \"x ",
                                        "token=\"",
                                        "auth=(\"a\",",
                                        "{\"token\":{",
                                        "[",
                                        "\\\"token\\\":\\\"",
                                        "hf_-",
                                        "token='",
                                        "by '",
                                        "a;",
                                        "password=;",
                                        "secret_key_value_",
                                        "password: a ",
                                        "A=b ",
                                        "vault login ",
                                        "token=a;b=",
                                        "\n",
                                        "%20eyJ",
                                        "https://h/hooks/",
                                        "rtmp://h/a/",
                                        "docker run ",
                                        "a/b:c@d",
                                        " a:b@c",
                                        "--key k ",
                                        "--key",
                                        "x"};

/// A text as the arguments of a process: as one, and split at its blanks, or else at every
/// eighth character.
struct Worst {
  std::string text;
  std::vector<std::string_view> one;
  std::vector<std::string_view> many;
  std::string joined;  // the many
};

std::vector<Worst> worstTexts() {
  std::vector<Worst> all(std::size(kPieces));
  for (std::size_t i = 0; i < all.size(); ++i) {
    Worst& worst = all[i];
    while (worst.text.size() < kSize) worst.text += kPieces[i];
    worst.text.resize(kSize);
    worst.one = {worst.text};
    const bool hasBlanks = kPieces[i].find(' ') != std::string_view::npos;
    for (std::string_view rest = worst.text; !rest.empty();) {
      const std::size_t end = std::min(hasBlanks ? rest.find(' ') : 8, rest.size());
      worst.many.push_back(rest.substr(0, end));
      if (worst.many.size() > 1) worst.joined += ' ';
      worst.joined += worst.many.back();
      rest.remove_prefix(std::min(end + (hasBlanks ? 1 : 0), rest.size()));
    }
    worst.joined.resize(std::min(worst.joined.size(), kSize));
  }
  return all;
}

using Work = std::function<void(const Worst&)>;

/// The milliseconds that the worst of the texts takes, round by round.
std::vector<double> worstOf(const std::vector<Worst>& texts, int rounds, const Work& work) {
  const auto milliseconds = [&](const Worst& text) {
    return cpuSecondsOfWork([&] { work(text); }) * 1000;
  };
  // Which one is the worst is told by the least of a few: other work on the machine is not.
  const Worst* worst = &texts.front();
  double most = -1;
  for (const Worst& text : texts) {
    double least = milliseconds(text);
    for (int i = 0; i < 3; ++i) least = std::min(least, milliseconds(text));
    if (least <= most) continue;
    most = least;
    worst = &text;
  }
  std::vector<double> costs;
  costs.reserve(static_cast<std::size_t>(rounds));
  for (int i = 0; i < rounds; ++i) costs.push_back(milliseconds(*worst));
  return costs;
}

}  // namespace

void measureCredentials(const Options& options, Report& report) {
  report.section("Credentials: the worst of many texts");
  const auto texts = worstTexts();
  std::vector<TextSpan> spans;
  std::vector<ArgumentSpan> inArguments;
  const std::pair<const char*, Work> works[] = {
      {"redactSecrets",
       [](const Worst& w) { std::ignore = ProcessScanner::redactSecrets(w.text); }},
      {"maskedLine", [](const Worst& w) { std::ignore = CredentialMask::maskedLine(w.text); }},
      {"shown", [](const Worst& w) { std::ignore = CredentialMask::shown(w.one, w.text); }},
      {"shown, many arguments",
       [](const Worst& w) { std::ignore = CredentialMask::shown(w.many, w.joined); }},
      {"names",
       [&](const Worst& w) {
         spans.clear();
         int left = credentials::kMostNames;
         credentials::appendNamedCredentials(w.text, true, left, spans);
       }},
      {"formats",
       [&](const Worst& w) {
         spans.clear();
         credentials::appendTokens(w.text, spans);
       }},
      {"URLs",
       [&](const Worst& w) {
         spans.clear();
         credentials::appendUrlCredentials(w.text, spans);
       }},
      {"programs",
       [&](const Worst& w) {
         inArguments.clear();
         credentials::appendProgramCredentials(w.one, inArguments);
       }},
  };
  for (const auto& [name, work] : works) {
    report.figure("credentials", std::string(name) + " of 64 KiB (ms)",
                  spread(worstOf(texts, options.rounds, work)));
  }
}

}  // namespace bench
