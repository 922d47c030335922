#include <cstdio>

#include "frontends/terminal/character_set.h"
#include "frontends/text/text_front_end.h"

int main() {
  const bool unicode = terminal::takeCharacterSet();
  return runText(unicode ? CharacterSet::unicode : CharacterSet::ascii, stdout);
}
