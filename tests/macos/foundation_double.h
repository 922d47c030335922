#pragma once

namespace foundation {

/// From now on the main bundle is the stage's.
void useStage();

}  // namespace foundation
