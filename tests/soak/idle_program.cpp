// Does nothing, under whatever name, until it is ended.
#include <unistd.h>

int main() {
  for (;;) pause();
}
