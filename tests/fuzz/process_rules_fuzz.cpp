// Classification, naming and redaction of any argument vector, against the plain second
// writing of the rules in tests/reference. The bytes: arguments with line feeds between them.

#include "fuzz/fuzzing.h"
#include "reference/process_rules.h"
#include "reference/text_rules.h"
#include "scanner/process_scanner.h"
#include "text/unicode.h"
#include "tools/joined.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  // Only UTF-8 comes from the platform. The reference is slow: longer lines tell nothing new.
  constexpr std::size_t kLongest = 4096;
  if (size > kLongest || !text::isUtf8(bytes)) return 0;
  const std::vector<std::string> arguments = fuzzing::split(bytes, '\n');
  const std::string line = joined(arguments);
  const std::string& name = arguments.front();

  FUZZ_CHECK(ProcessScanner::classifyLabRole(name, arguments, line) ==
             reference::classifyLabRole(name, arguments, line));

  const auto friendly = ProcessScanner::friendlyName(arguments, "fallback");
  const auto expected = reference::friendlyName(arguments, "fallback");
  FUZZ_CHECK(friendly.displayName == expected.first);
  FUZZ_CHECK(friendly.product == expected.second);

  const auto lowered = reference::lower(arguments);
  const std::string lower = reference::lower(line);
  for (const bool isServing : {false, true}) {
    FUZZ_CHECK(ProcessScanner::isTrainingProcess(lowered.front(), lower, lowered, isServing) ==
               reference::isTrainingProcess(lowered.front(), lower, lowered, isServing));
  }

  constexpr std::string_view kNames[] = {"--port", "-m", "--model"};
  FUZZ_CHECK(ProcessScanner::flag(arguments, kNames) ==
             reference::flag(arguments, {"--port", "-m", "--model"}));
  FUZZ_CHECK(ProcessScanner::basenameModel(line) == reference::basenameModel(line));
  FUZZ_CHECK(ProcessScanner::redactSecrets(line) == reference::redactSecrets(line));
  return 0;
}
