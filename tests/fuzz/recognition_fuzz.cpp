// The recognition of any argument vector, whatever the rules have said. The bytes: arguments with
// line feeds between them, and the role by rules in the first byte.

#include "fuzz/fuzzing.h"
#include "scanner/process_scanner.h"
#include "scanner/recognizer.h"
#include "text/path.h"
#include "text/unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  constexpr std::size_t kLongest = 64 << 10;
  if (size == 0 || size > kLongest || !text::isUtf8(bytes.substr(1))) return 0;
  std::vector<std::string> arguments;
  for (std::string& argument : fuzzing::split(bytes.substr(1), '\n')) {
    // The platform hands over none that is empty.
    if (!argument.empty()) arguments.push_back(std::move(argument));
  }
  const std::vector<std::string_view> views(arguments.begin(), arguments.end());
  const auto byRules = static_cast<LabRole>(data[0] % 4);
  const std::string exe =
      views.empty() ? std::string() : text::lowered(text::lastPathComponent(views.front()));

  const auto verdict = recognition::verdictOn(exe, views, byRules);
  const auto again = recognition::verdictOn(exe, views, byRules);
  FUZZ_CHECK(verdict.role == again.role);
  FUZZ_CHECK(verdict.name.has_value() == again.name.has_value());
  if (verdict.name) {
    FUZZ_CHECK(verdict.name->displayName == again.name->displayName);
    FUZZ_CHECK(text::isUtf8(verdict.name->displayName));
    FUZZ_CHECK(!verdict.name->product.empty());
  }
  if (ProcessScanner::wrapperExecutables().contains(exe)) FUZZ_CHECK(verdict.role == LabRole::none);
  return 0;
}
