#include "scanner/memory_format.h"

#include "scanner/memory_units.h"
#include "text/format.h"

namespace MemoryFormat {

std::string detail(double mb) {
  return mb >= kMBPerGB ? text::format("%.2f GB", mb / kMBPerGB) : text::format("%.0f MB", mb);
}

std::string compact(double mb) {
  if (mb >= kMBPerGB) return text::format("%4.1f GB", mb / kMBPerGB);
  if (mb >= 10) return text::format("%4.0f MB", mb);
  return text::format("%4.1f MB", mb);
}

std::string inSentence(double mb) {
  const std::string text = compact(mb);
  return text.substr(text.find_first_not_of(' '));
}

}  // namespace MemoryFormat
