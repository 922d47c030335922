#include "platform/words.h"

namespace platform {

const Words& words() {
  return kLinuxWords;
}

}  // namespace platform
