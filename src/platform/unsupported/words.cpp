#include "platform/words.h"

namespace platform {

const Words& words() {
  return kUnsupportedWords;
}

}  // namespace platform
