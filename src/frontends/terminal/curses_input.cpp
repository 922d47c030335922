#include "frontends/terminal/curses_input.h"

#include <curses.h>

namespace terminal {
namespace {

constexpr int kEscapeDelay = 25;  // milliseconds; the bytes of one key come without a pause
constexpr wint_t kControlL = 0x0C;
constexpr wint_t kMostFunctionKeys = 12;

// Key codes of our own, above those that curses gives the keys of a terminal's description.
constexpr int kPasteBegin = 0x1000;
constexpr int kPasteEnd = 0x1001;

struct KeyBytes {
  const char* bytes;
  int key;
};

/// Some terminals send another sequence for a key than their description says.
constexpr KeyBytes kOtherForms[] = {
    {"\033[A", KEY_UP},     {"\033OA", KEY_UP},     {"\033[B", KEY_DOWN},  {"\033OB", KEY_DOWN},
    {"\033[C", KEY_RIGHT},  {"\033OC", KEY_RIGHT},  {"\033[D", KEY_LEFT},  {"\033OD", KEY_LEFT},
    {"\033[H", KEY_HOME},   {"\033OH", KEY_HOME},   {"\033[1~", KEY_HOME}, {"\033[7~", KEY_HOME},
    {"\033[F", KEY_END},    {"\033OF", KEY_END},    {"\033[4~", KEY_END},  {"\033[8~", KEY_END},
    {"\033[5~", KEY_PPAGE}, {"\033[6~", KEY_NPAGE}, {"\033[Z", KEY_BTAB},  {"\033OM", KEY_ENTER},
};

Input mouseInput() {
  Input input{.kind = Input::Kind::other};
  MEVENT event;
  if (getmouse(&event) != OK) return input;
  input.x = event.x;
  input.y = event.y;
  if ((event.bstate & BUTTON1_PRESSED) != 0) input.kind = Input::Kind::click;
  if ((event.bstate & BUTTON4_PRESSED) != 0) input.kind = Input::Kind::wheelUp;
  if ((event.bstate & BUTTON5_PRESSED) != 0) input.kind = Input::Kind::wheelDown;
  return input;
}

Input ofKeyCode(wint_t key) {
  switch (key) {
    case KEY_UP:
      return {.kind = Input::Kind::up};
    case KEY_DOWN:
      return {.kind = Input::Kind::down};
    case KEY_LEFT:
      return {.kind = Input::Kind::left};
    case KEY_RIGHT:
      return {.kind = Input::Kind::right};
    case KEY_PPAGE:
      return {.kind = Input::Kind::pageUp};
    case KEY_NPAGE:
      return {.kind = Input::Kind::pageDown};
    case KEY_HOME:
      return {.kind = Input::Kind::home};
    case KEY_END:
      return {.kind = Input::Kind::end};
    case KEY_ENTER:
      return {.kind = Input::Kind::enter};
    case KEY_BTAB:
      return {.kind = Input::Kind::backTab};
    case KEY_MOUSE:
      return mouseInput();
    case KEY_BACKSPACE:
      return {.kind = Input::Kind::character, .character = kBackspace};
    case KEY_RESIZE:
      return {.kind = Input::Kind::redraw};
    case kPasteBegin:
      return {.kind = Input::Kind::pasteBegin};
    case kPasteEnd:
      return {.kind = Input::Kind::pasteEnd};
    default:
      if (key > KEY_F0 && key <= KEY_F(kMostFunctionKeys)) {
        return {.kind = Input::Kind::function, .character = static_cast<char32_t>(key - KEY_F0)};
      }
      return {.kind = Input::Kind::other};
  }
}

Input ofCharacter(wint_t character) {
  switch (character) {
    case L'\r':
    case L'\n':
      return {.kind = Input::Kind::enter};
    case L'\033':
      return {.kind = Input::Kind::escape};
    case L'\t':
      return {.kind = Input::Kind::tab};
    case L'\b':
      return {.kind = Input::Kind::character, .character = kBackspace};
    case kControlL:
      clearok(curscr, TRUE);
      return {.kind = Input::Kind::redraw};
    default:
      return {.kind = Input::Kind::character, .character = static_cast<char32_t>(character)};
  }
}

}  // namespace

void prepareKeys() {
  cbreak();
  noecho();
  nonl();
  set_escdelay(kEscapeDelay);
  keypad(stdscr, TRUE);
  nodelay(stdscr, TRUE);
  for (const auto& form : kOtherForms) {
    if (key_defined(form.bytes) <= 0) define_key(form.bytes, form.key);
  }
  define_key("\033[200~", kPasteBegin);
  define_key("\033[201~", kPasteEnd);
  mouseinterval(0);  // report a press at once, without waiting for the release
  mousemask(BUTTON1_PRESSED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
}

std::optional<Input> readKey() {
  wint_t character = 0;
  switch (get_wch(&character)) {
    case OK:
      return ofCharacter(character);
    case KEY_CODE_YES:
      return ofKeyCode(character);
    default:
      return std::nullopt;
  }
}

}  // namespace terminal
