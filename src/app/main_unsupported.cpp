#include <clocale>
#include <cstdio>

#include "frontends/text/run_text.h"

int main() {
  std::setlocale(LC_CTYPE, "");
  return runText(stdout);
}
