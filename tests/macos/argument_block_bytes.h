#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace darwin {

/// An argument block as the kernel lays it out: argc, path, padding, arguments, environment.
std::string argumentBlock(std::string_view path, const std::vector<std::string>& arguments,
                          const std::vector<std::string>& environment = {});
/// The same with an argc of the test's own.
std::string rawArgumentBlock(std::int32_t argc, std::string_view rest);

}  // namespace darwin
