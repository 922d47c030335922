// A terminal that sends what no terminal sends.
#include <random>
#include <string>

#include "soak/crowd.h"
#include "soak/storm.h"

namespace {

class Noise : public Storm {
 protected:
  /// Bytes of every kind but those that choose (Enter), end the program, or stop it or its
  /// output; and no report of the mouse ("\033[<"), for whose end ncurses waits.
  static std::string someBytes(std::mt19937& random) {
    static const std::string kNever = "\r\nqmM\003\032\034\023<";
    static const char* const kBeginnings[] = {"\033[", "\033]",    "\033P",    "\033O",    "\033",
                                              "\x9b",  "\xe2\x80", "\xf0\x9f", "\033[200~"};
    std::string bytes = kBeginnings[random() % std::size(kBeginnings)];
    const auto length = random() % 40;
    for (unsigned i = 0; i < length; ++i) {
      const bool isPart = random() % 2 == 0;
      const char byte = isPart ? "0123456789;?:>"[random() % 14] : static_cast<char>(random());
      if (kNever.find(byte) == std::string::npos) bytes += byte;
    }
    return bytes;
  }
};

TEST_F(Noise, OfATerminal) {
  const Crowd crowd({{"living", 100}});
  TerminalSession terminal;
  std::mt19937 random(4711);
  ride(terminal, share(), [&] {
    for (int i = 0; i < 20; ++i) terminal.send(someBytes(random));
    terminal.settle();
    // Whatever it has opened is closed by this, and what it has begun is ended.
    terminal.send("\033");
    terminal.settle();
    terminal.send("\033");
    terminal.settle();
    terminal.send("\033[201~");  // a paste
    terminal.settle();
  });
}

}  // namespace
