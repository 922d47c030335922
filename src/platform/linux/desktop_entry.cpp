#include "platform/linux/desktop_entry.h"

#include <cstddef>

#include "platform/linux/trimmed.h"
#include "text/split.h"

namespace platform {
namespace {

/// Appends what the letter behind a backslash in a value stands for.
void appendEscape(char letter, std::string& text) {
  switch (letter) {
    case 's':
      text += ' ';
      break;
    case 'n':
      text += '\n';
      break;
    case 't':
      text += '\t';
      break;
    case 'r':
      text += '\r';
      break;
    case '\\':
      text += '\\';
      break;
    default:
      text += '\\';
      text += letter;
  }
}

std::string unescaped(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\' && i + 1 < value.size()) {
      appendEscape(value[++i], text);
    } else {
      text += value[i];
    }
  }
  return text;
}

/// The entries of a list. Each ends with ";"; "\;" is a ";" within an entry.
std::vector<std::string> listOf(std::string_view value) {
  std::vector<std::string> list;
  std::string item;
  const auto finish = [&] {
    if (!item.empty()) list.push_back(std::move(item));
    item.clear();
  };
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == ';') {
      finish();
    } else if (value[i] == '\\' && i + 1 < value.size() && value[i + 1] == ';') {
      item += value[++i];
    } else if (value[i] == '\\' && i + 1 < value.size()) {
      appendEscape(value[++i], item);
    } else {
      item += value[i];
    }
  }
  finish();
  return list;
}

void assign(std::string_view key, std::string_view value, DesktopEntry& entry) {
  const bool isTrue = value == "true";
  if (key == "Name") entry.name = unescaped(value);
  if (key == "Icon") entry.icon = unescaped(value);
  if (key == "Exec") entry.exec = unescaped(value);
  if (key == "TryExec") entry.tryExec = unescaped(value);
  if (key == "Path") entry.folder = unescaped(value);
  if (key == "Categories") entry.categories = listOf(value);
  if (key == "OnlyShowIn") entry.onlyShowIn = listOf(value);
  if (key == "NotShowIn") entry.notShowIn = listOf(value);
  if (key == "Hidden") entry.isHidden = isTrue;
  if (key == "NoDisplay") entry.isListed = !isTrue;
  if (key == "Terminal") entry.needsTerminal = isTrue;
}

/// Collects the words of a command.
class Words {
 public:
  explicit Words(const DesktopEntry& entry, std::string_view path) : entry_(entry), path_(path) {}

  void add(char byte) {
    word_ += byte;
    begin();
  }
  void begin() { begun_ = true; }

  /// Ends the current word. A word that consists only of field codes that were dropped is left
  /// out.
  void end() {
    if (begun_) words_.push_back(std::move(word_));
    word_.clear();
    begun_ = false;
  }

  void addFieldCode(char code) {
    if (code == '%') add('%');
    if (code == 'c') addText(entry_.name);
    if (code == 'k') addText(path_);
    if (code == 'i' && !begun_ && !entry_.icon.empty()) {
      words_.insert(words_.end(), {"--icon", entry_.icon});
    }
  }

  std::vector<std::string> take() {
    end();
    return std::move(words_);
  }

 private:
  void addText(std::string_view text) {
    for (const char byte : text) add(byte);
  }

  const DesktopEntry& entry_;
  std::string_view path_;
  std::vector<std::string> words_;
  std::string word_;
  bool begun_ = false;
};

}  // namespace

std::optional<DesktopEntry> desktopEntry(std::string_view bytes) {
  DesktopEntry entry;
  bool isApplication = false;
  bool inEntry = false;
  while (!bytes.empty()) {
    const std::string_view line = trimmed(text::takeUntil('\n', bytes));
    if (line.starts_with('#')) continue;
    if (line.starts_with('[')) {
      inEntry = line == "[Desktop Entry]";
      continue;
    }
    const auto equals = line.find('=');
    if (!inEntry || equals == std::string_view::npos) continue;
    const std::string_view key = trimmed(line.substr(0, equals));
    const std::string_view value = trimmed(line.substr(equals + 1));
    if (key == "Type") isApplication = value == "Application";
    assign(key, value, entry);
  }
  return isApplication ? std::optional(std::move(entry)) : std::nullopt;
}

std::optional<std::vector<std::string>> commandOf(const DesktopEntry& entry,
                                                  std::string_view path) {
  const std::string_view exec = entry.exec;
  Words words(entry, path);
  char quote = '\0';
  for (std::size_t i = 0; i < exec.size(); ++i) {
    const char byte = exec[i];
    const bool hasNext = i + 1 < exec.size();
    if (byte == '\\' && quote != '\'' && hasNext) {
      words.add(exec[++i]);
    } else if (byte == '%' && hasNext) {
      words.addFieldCode(exec[++i]);
    } else if (byte == quote) {
      quote = '\0';
    } else if (quote == '\0' && (byte == '"' || byte == '\'')) {
      quote = byte;
      words.begin();
    } else if (quote == '\0' && (byte == ' ' || byte == '\t' || byte == '\n')) {
      words.end();
    } else {
      words.add(byte);
    }
  }
  auto command = words.take();
  if (quote != '\0' || command.empty()) return std::nullopt;
  return command;
}

}  // namespace platform
