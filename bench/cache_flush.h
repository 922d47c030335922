#pragma once

namespace bench {

/// What other work leaves of the processor's caches: nothing. Its own cost is not to be measured.
void flushCaches();

}  // namespace bench
