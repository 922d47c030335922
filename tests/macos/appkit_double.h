#pragma once

#include <string>
#include <vector>

/// What the edition under test asked of AppKit.
namespace appkit {

struct Record {
  std::vector<std::string> openedUrls;
};

Record& record();
void reset();

}  // namespace appkit
