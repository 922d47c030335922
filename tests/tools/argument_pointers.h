#pragma once

#include <string>
#include <vector>

/// `words` as exec and posix_spawn take them: pointers into them, and a null one at the end.
inline std::vector<char*> argumentPointers(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}
