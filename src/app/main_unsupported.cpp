#include <clocale>
#include <cstdio>

#include "frontends/text/text_front_end.h"

int main() {
  std::setlocale(LC_CTYPE, "");
  return runText(stdout);
}
