// What the leak sanitizer is not to report: the runtime, Foundation and the fonts' library keep
// what they made.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libgnustep-base\nleak:libobjc\nleak:libfontconfig\n";
}
