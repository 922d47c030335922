// The credential mask on any argument vector. The bytes: arguments with line feeds between
// them.

#include "fuzz/fuzzing.h"
#include "scanner/credentials/credential_finder.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/credentials/secret_redaction.h"
#include "scanner/process_scanner.h"
#include "tools/joined.h"

namespace {

void checkOrder(const std::vector<TextSpan>& spans, std::size_t size) {
  std::size_t end = 0;
  for (const TextSpan& span : spans) {
    FUZZ_CHECK((span.begin > end || end == 0) && span.begin < span.end && span.end <= size);
    end = span.end;
  }
}

std::size_t countOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

/// The line without what the program has put there.
std::string withoutMasks(std::string line) {
  for (const std::string_view mask : {ProcessScanner::kRedactedSecret, std::string_view("•••")}) {
    for (auto at = line.find(mask); at != std::string::npos; at = line.find(mask, at)) {
      line.replace(at, mask.size(), "\n");
    }
  }
  return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto arguments = fuzzing::split(fuzzing::text(data, size), '\n');
  const std::vector<std::string_view> views(arguments.begin(), arguments.end());
  const std::string line = joined(arguments);

  const auto [found, searched] = credentials::findInArguments(views);
  const bool isWhole = searched == views.size();
  for (const auto& [argument, spans] : found) checkOrder(spans, arguments.at(argument).size());
  checkOrder(credentials::findInLine(line), line.size());

  const auto shown = CredentialMask::shown(views, line);
  const std::string redacted = ProcessScanner::redactSecrets(line);
  // What is masked is masked in the vector and in the line; where there is nothing to mask
  // the pattern has the last word.
  FUZZ_CHECK(shown.arguments.has_value() == (!found.empty() || !isWhole));
  if (!shown.arguments) FUZZ_CHECK(shown.commandLine == redacted);
  // All that the pattern makes of the line stands in it.
  FUZZ_CHECK(countOf(shown.commandLine, ProcessScanner::kRedactedSecret) >=
             ProcessScanner::secretMatches(line).size());
  // No value of an argument is left in the line. (A value may itself look like a mask.)
  const std::string visible = withoutMasks(shown.commandLine);
  for (const auto& [argument, spans] : found) {
    const std::string& text = arguments[argument];
    constexpr std::size_t kTellingLength = 12;
    for (const TextSpan& span : spans) {
      const std::string value = text.substr(span.begin, span.end - span.begin);
      if (value.size() < kTellingLength || countOf(line, value) > 1) continue;
      FUZZ_CHECK(visible.find(value) == std::string::npos);
    }
  }
  return 0;
}
