#include "reference/text_rules.h"

#include "text/unicode.h"

namespace reference {

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

bool containsAny(const std::string& text, const std::vector<std::string>& parts) {
  for (const auto& part : parts) {
    if (contains(text, part)) return true;
  }
  return false;
}

bool beginsWith(const std::string& text, const std::string& start) {
  return text.substr(0, start.size()) == start;
}

bool endsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool isElement(const std::vector<std::string>& list, const std::string& text) {
  for (const auto& element : list) {
    if (element == text) return true;
  }
  return false;
}

std::string joined(const std::vector<std::string>& arguments) {
  std::string line;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (i != 0) line += " ";
    line += arguments[i];
  }
  return line;
}

std::string lower(const std::string& text) {
  return text::lowered(text);
}

std::vector<std::string> lower(std::vector<std::string> texts) {
  for (auto& text : texts) text = lower(text);
  return texts;
}

std::string lastPathComponent(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  if (path == "/") return path;
  return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

}  // namespace reference
