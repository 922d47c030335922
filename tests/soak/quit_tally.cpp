#include "soak/quit_tally.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdio>
#include <memory>

namespace {

/// Says it only so often: what goes wrong goes wrong thousands of times.
void complain(int times, const std::string& what, const std::string& where) {
  constexpr int kEnough = 3;
  if (times <= kEnough) ADD_FAILURE() << what << ": " << where;
}

}  // namespace

QuitTally* QuitTally::shared(std::size_t count) {
  void* memory = mmap(nullptr, count * sizeof(QuitTally), PROT_READ | PROT_WRITE,
                      MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  auto* const tallies = static_cast<QuitTally*>(memory);
  std::uninitialized_default_construct_n(tallies, count);
  return tallies;
}

void QuitTally::add(const QuitClick& click, const PidRelay& relay) {
  if (click.wasMade) ++clicks;
  if (relay.sharedATick()) ++inOneTick;
  if (relay.meant() == nullptr) {
    if (!click.wasMade) ++gone;
    if (relay.successor() != nullptr && relay.successor()->wasSignalled()) {
      complain(++wrong, "a successor was signalled", click.where);
    }
  } else if (!click.wasMade) {
    complain(++missed, "the one that was meant had no row", click.where);
  } else if (click.mustReach) {
    if (!relay.meant()->endsBy(click.signal)) {
      complain(++missed, "the one that was meant was not ended", click.where);
    }
  } else if (relay.meant()->wasSignalled()) {
    complain(++wrong, "it was signalled, whoever it is", click.where);
  }
}

void QuitTally::report(const char* name) const {
  std::printf("  %-32s %6d clicks, %d wrong, %d missed; %d rows had gone", name, clicks.load(),
              wrong.load(), missed.load(), gone.load());
  if (inOneTick > 0) std::printf("; %d times in one tick", inOneTick.load());
  std::printf("\n");
  EXPECT_EQ(wrong, 0) << name;
  EXPECT_EQ(missed, 0) << name;
}
