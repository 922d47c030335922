#include "platform/words.h"

namespace platform {

const Words& words() {
  return kMacWords;
}

}  // namespace platform
