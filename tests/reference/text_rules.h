#pragma once

#include <string>
#include <vector>

/// What the reference rules need of texts.
namespace reference {

bool contains(const std::string& text, const std::string& part);
bool containsAny(const std::string& text, const std::vector<std::string>& parts);
bool beginsWith(const std::string& text, const std::string& start);
bool endsWith(const std::string& text, const std::string& end);
bool isElement(const std::vector<std::string>& list, const std::string& text);
std::string joined(const std::vector<std::string>& arguments);
std::string lower(const std::string& text);
std::vector<std::string> lower(std::vector<std::string> texts);
std::string lastPathComponent(std::string path);

}  // namespace reference
