#pragma once

#include <cstdio>
#include <memory>

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// Closed at the end of its scope.
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;
