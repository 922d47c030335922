#include "frontends/terminal/direct_color.h"

#include "frontends/terminal/terminfo.h"

// curses.h comes before term.h, which needs its types. Both come after our own headers, because
// term.h defines macros with ordinary names.
#include <curses.h>
#include <term.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace terminal {
namespace {

constexpr int kMagic = 01036;  // numbers of 32 bits
constexpr int kDirectColors = 1 << 24;
constexpr int kPairs = 1 << 16;

constexpr char kForeground[] = "\033[38;2;%p1%{65536}%/%d;%p1%{256}%/%{255}%&%d;%p1%{255}%&%dm";
constexpr char kBackground[] = "\033[48;2;%p1%{65536}%/%d;%p1%{256}%/%{255}%&%d;%p1%{255}%&%dm";

/// Writes a compiled terminfo entry. Its numbers are little-endian.
class Entry {
 public:
  void addByte(int value) { bytes_ += static_cast<char>(value); }
  void addShort(int value) {
    addByte(value & 0xFF);
    addByte((value >> 8) & 0xFF);
  }
  void addInt(int value) {
    addShort(value & 0xFFFF);
    addShort(static_cast<int>(static_cast<std::uint32_t>(value) >> 16));
  }
  void addText(std::string_view text) {
    bytes_ += text;
    addByte(0);
  }
  void addTable(const std::string& table) { bytes_ += table; }
  void align() {
    if (bytes_.size() % 2 != 0) addByte(0);
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

/// Strings one after the other, with the offset of each; -1 for a string that is missing.
struct StringTable {
  std::vector<int> offsets;
  std::string bytes;

  void add(const char* text) {
    const bool present = isPresent(text);
    offsets.push_back(present ? static_cast<int>(bytes.size()) : -1);
    if (!present) return;
    bytes += text;
    bytes += '\0';
  }
};

int numberOf(std::string_view name, const char* capability) {
  if (name == "colors") return kDirectColors;
  if (name == "pairs") return kPairs;
  const int value = tigetnum(capability);
  return value < 0 ? -1 : value;
}

const char* stringOf(std::string_view name, const char* capability) {
  if (name == "setaf") return kForeground;
  if (name == "setab") return kBackground;
  if (name == "op") return "\033[39;49m";
  // With direct colours there is no palette that could be changed.
  if (name == "initc" || name == "initp" || name == "oc") return nullptr;
  return tigetstr(capability);
}

std::vector<const char*> names(NCURSES_CONST char* const* table) {
  std::vector<const char*> all;
  for (; *table != nullptr; ++table) all.push_back(*table);
  return all;
}

/// The capabilities that have a name in the entry instead of a number: direct colour, the mouse.
void addExtensions(Entry& entry) {
  StringTable strings;
  strings.add(tigetstr("XM"));
  StringTable labels;
  labels.add("RGB");
  labels.add("XM");

  entry.align();
  entry.addShort(1);  // booleans
  entry.addShort(0);  // numbers
  entry.addShort(1);  // strings
  entry.addShort(static_cast<int>(strings.offsets.size() + labels.offsets.size()));
  entry.addShort(static_cast<int>(strings.bytes.size() + labels.bytes.size()));
  entry.addByte(1);
  entry.align();
  for (const int offset : strings.offsets) entry.addShort(offset);
  for (const int offset : labels.offsets) entry.addShort(offset);
  entry.addTable(strings.bytes);
  entry.addTable(labels.bytes);
}

}  // namespace

std::string directColorDescription() {
  const char* const terminalName = std::getenv("TERM");
  if (terminalName == nullptr) return {};
  const auto flags = names(boolnames);
  const auto numbers = names(numnames);
  const auto stringNames = names(strnames);
  StringTable strings;
  for (const char* name : stringNames) strings.add(stringOf(name, name));

  Entry entry;
  entry.addShort(kMagic);
  entry.addShort(static_cast<int>(std::string_view(terminalName).size()) + 1);
  entry.addShort(static_cast<int>(flags.size()));
  entry.addShort(static_cast<int>(numbers.size()));
  entry.addShort(static_cast<int>(strings.offsets.size()));
  entry.addShort(static_cast<int>(strings.bytes.size()));
  entry.addText(terminalName);
  for (const char* name : flags) {
    entry.addByte(std::string_view(name) != "ccc" && tigetflag(name) == 1 ? 1 : 0);
  }
  entry.align();
  for (const char* name : numbers) entry.addInt(numberOf(name, name));
  for (const int offset : strings.offsets) entry.addShort(offset);
  entry.addTable(strings.bytes);
  addExtensions(entry);
  return entry.bytes();
}

DescriptionInEnvironment::DescriptionInEnvironment(const std::string& compiled) {
  if (const char* const value = std::getenv("TERMINFO")) {
    wasSet_ = true;
    previous_ = value;
  }
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string value = "hex:";
  for (const char c : compiled) {
    const auto byte = static_cast<unsigned char>(c);
    value += kDigits[byte >> 4];
    value += kDigits[byte & 0xF];
  }
  setenv("TERMINFO", value.c_str(), 1);
}

DescriptionInEnvironment::~DescriptionInEnvironment() {
  if (wasSet_) {
    setenv("TERMINFO", previous_.c_str(), 1);
  } else {
    unsetenv("TERMINFO");
  }
}

}  // namespace terminal
