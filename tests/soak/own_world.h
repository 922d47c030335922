#pragma once

#include <functional>
#include <optional>

/// Runs `work` where it sees no processes but its own: in a pid namespace with a /proc of its
/// own, whose process 1 reaps all that lose their parents. What `work` returns (0 to 253), or
/// 255 when it crashed; none where no such namespace can be made.
std::optional<int> resultInOwnPids(const std::function<int()>& work);

/// The same; but where no such namespace can be made it says so, and runs `work` without one.
int runInOwnWorld(const std::function<int()>& work);
