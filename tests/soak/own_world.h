#pragma once

#include <functional>

/// Runs `work` where it sees no processes but its own: in a pid namespace with a /proc of its
/// own. Where that can't be made it says so and runs `work` all the same. What `work` returns
/// (0 to 255).
int runInOwnWorld(const std::function<int()>& work);
