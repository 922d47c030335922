// What the menu says of graphics cards, and that it says nothing where there are none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frontends/text/menu_text.h"
#include "ui/alerts.h"
#include "ui/controller_test.h"
#include "ui/memory_lines.h"
#include "ui/short_menu.h"
#include "ui/strip_text.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

constexpr std::uint64_t kMB = 1 << 20;
constexpr std::uint64_t kGB = 1 << 30;

class GpuRows : public ControllerTest {
 protected:
  GpuRows() {
    addProcess(1, "firefox", 700);
    addProcess(2, "llama-server", 300);
    addProcess(3, "blender", 20);
  }

  static void addCards(int count) {
    for (int i = 0; i < count; ++i) {
      machine().gpus.devices.push_back(
          {"0000:6" + std::to_string(i) + ":00.0", "H100",
           platform::GpuCapacity{80 * kGB, (38 + static_cast<std::uint64_t>(i)) * kGB}});
    }
  }
  static void use(std::int32_t pid, std::uint64_t bytes, std::size_t device = 0) {
    machine().gpus.uses.push_back({pid, device, bytes, machine().clock});
  }
  static void addUses() {
    use(1, 512 * kMB);
    use(2, 36 * kGB + 102 * kMB);
    use(3, 2 * kGB);
  }

  std::vector<std::string> summary() const {
    const auto all = titles();
    return {all.begin() + 1, std::find(all.begin() + 1, all.end(), "")};
  }
  std::vector<std::string> section(const std::string& header) const {
    const auto all = titles();
    const auto first = std::find(all.begin(), all.end(), header);
    if (first == all.end()) return {};
    return {first + 1, std::find(first, all.end(), "")};
  }
};

TEST_F(GpuRows, AreNoneOnAMachineWithoutCards) {
  start();
  for (const MenuItem& item : menu().items) {
    EXPECT_THAT(item.title, Not(HasSubstr("GPU")));
    EXPECT_THAT(item.toolTip, Not(HasSubstr("GPU")));
    for (const MenuItem& entry : item.submenu) EXPECT_THAT(entry.title, Not(HasSubstr("GPU")));
  }
  EXPECT_FALSE(stripOf(menu())->gpu);
  EXPECT_EQ(stripOf(menu())->itemHeight(), MemoryPressureView::kItemHeight);
  EXPECT_THAT(menuText(menu()), Not(HasSubstr("GPU")));
}

TEST_F(GpuRows, SumUpACardBelowTheMachine) {
  addCards(1);
  addUses();
  start();
  EXPECT_THAT(summary(),
              ElementsAre("System   8.0 / 16 GB used", "GPU  38.0 / 80 GB used",
                          "Largest  700 MB  firefox", "Largest on GPU  36.1 GB  LM Studio: LLM",
                          "Training / fine-tunes  none", "Model servers  1  ·  0.3 GB"));
  EXPECT_EQ(menu().items[2].toolTip, "H100");
}

TEST_F(GpuRows, SumUpFourCardsEach) {
  addCards(4);
  start();
  EXPECT_THAT(summary(), ElementsAre("System   8.0 / 16 GB used", "GPU  38.0 / 80 GB used",
                                     "GPU  39.0 / 80 GB used", "GPU  40.0 / 80 GB used",
                                     "GPU  41.0 / 80 GB used", "Largest  700 MB  firefox",
                                     "Training / fine-tunes  none", "Model servers  1  ·  0.3 GB"));
}

TEST_F(GpuRows, SumUpMoreCardsTogether) {
  addCards(5);
  start();
  EXPECT_EQ(summary().at(4), "GPU  41.0 / 80 GB used");
  EXPECT_EQ(summary().at(5), "All 5 GPUs  200.0 / 400 GB used");
}

TEST_F(GpuRows, HaveASectionBelowTopRam) {
  addCards(1);
  addUses();
  start();
  const auto all = titles();
  const auto top = std::find(all.begin(), all.end(), "— Top RAM (colors match graph) —");
  const auto gpu = std::find(all.begin(), all.end(), "— Top GPU —");
  ASSERT_NE(gpu, all.end());
  EXPECT_EQ(std::find(top, all.end(), "") + 1, gpu);
  EXPECT_THAT(section("— Top GPU —"), ElementsAre("★ LM Studio: LLM  ·   300 MB  ·  GPU 36.1 GB",
                                                  "blender  ·    20 MB  ·  GPU  2.0 GB",
                                                  "firefox  ·   700 MB  ·  GPU  512 MB"));
  // Who is there for the card's memory alone is in no other list.
  EXPECT_THAT(listedPids(), ElementsAre(2, 1));
  EXPECT_THAT(section("— Top RAM (colors match graph) —"),
              ElementsAre("firefox  ·   700 MB  ·  GPU  512 MB",
                          "★ LM Studio: LLM  ·   300 MB  ·  GPU 36.1 GB"));
}

TEST_F(GpuRows, EndBehindTheLock) {
  addCards(1);
  addProcess(4, "vllm", 60).effectiveUid = 0;
  use(4, 4 * kGB);
  start();
  EXPECT_THAT(row(4).title, EndsWith("MB 🔒  ·  GPU  4.0 GB"));
}

TEST_F(GpuRows, SayItInWordsACardALine) {
  addCards(2);
  use(2, 36 * kGB);
  use(2, 300 * kMB, 1);
  start();
  const std::string first = "GPU memory: 36.00 GB on H100 (0000:60:00.0)";
  const std::string second = "GPU memory: 300 MB on H100 (0000:61:00.0)";
  EXPECT_THAT(row(2).toolTip, EndsWith("strip above.\n" + first + "\n" + second));
  EXPECT_EQ(row(2).submenu.at(2).title, first);
  EXPECT_EQ(row(2).submenu.at(3).title, second);
  EXPECT_FALSE(row(2).submenu.at(2).enabled);
  choose(2, Action::showDetails);
  EXPECT_THAT(lastAlert().informativeText,
              HasSubstr("\nOwner: ada\n" + first + "\n" + second + "\n\nCommand:\n"));
}

TEST_F(GpuRows, SayNothingOfOthers) {
  addCards(1);
  use(2, kGB);
  start();
  EXPECT_THAT(row(1).title, Not(HasSubstr("GPU")));
  EXPECT_THAT(row(1).toolTip, Not(HasSubstr("GPU")));
  EXPECT_THAT(Alerts::details(controller().processes().at(1)).informativeText,
              Not(HasSubstr("GPU")));
}

TEST(GpuLines, AreBounded) {
  VordaProcess process;
  process.gpuMemory.emplace();
  for (int i = 0; i < 9; ++i) process.gpuMemory->shares.push_back({"c" + std::to_string(i), 1024});
  const auto lines = gpuLines(process);
  ASSERT_EQ(lines.size(), 8U);
  EXPECT_EQ(lines[6], "GPU memory: 1.00 GB on c6");
  EXPECT_EQ(lines[7], "GPU memory: 2.00 GB on 2 other cards");
}

TEST(GpuLines, AreHarmlessWhateverACardIsCalled) {
  VordaProcess process;
  process.gpuMemory = GpuMemory{1, {{"a\nb\x1B[2J", 1}}};
  const auto lines = gpuLines(process);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].find_first_of("\n\x1B"), std::string::npos);
}

TEST_F(GpuRows, QuitWhomTheyNameAndAreGoneThen) {
  addCards(1);
  addUses();
  start();
  choose(3, Action::quitProcess);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{3, false}));
  EXPECT_THAT(section("— Top GPU —"), Not(Contains(HasSubstr("blender"))));
}

TEST_F(GpuRows, AskAboutTheRowsThatAreShown) {
  for (int pid = 10; pid < 30; ++pid) addProcess(pid, "ordinary", 100);
  start();
  EXPECT_EQ(machine().pidsOnGpus.size(), 8U);
  EXPECT_THAT(machine().pidsOnGpus, Contains(1));
  EXPECT_THAT(machine().pidsOnGpus, Contains(2));
  EXPECT_FALSE(machine().gpusAreWatched);
  openMenu();
  frontEnd_.advance(5);
  EXPECT_TRUE(machine().gpusAreWatched);
  closeMenu();
  EXPECT_FALSE(machine().gpusAreWatched);
}

TEST_F(GpuRows, AskAboutAllOfASectionThatIsShownWhole) {
  constexpr int kLastOrdinary = 29;
  constexpr int kLastServer = 69;
  for (int pid = 10; pid <= kLastOrdinary; ++pid) addProcess(pid, "ordinary", 100);
  for (int pid = 50; pid <= kLastServer; ++pid) addProcess(pid, "llama-server", 5);
  start();
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(kLastServer)));

  controller().arrange({.wholeSections = {"— Model servers —"}});
  frontEnd_.advance(5);
  EXPECT_THAT(machine().pidsOnGpus, Contains(kLastServer));
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(kLastOrdinary)));

  controller().arrange({.isWhole = true});
  frontEnd_.advance(5);
  EXPECT_THAT(machine().pidsOnGpus, Contains(kLastOrdinary));

  controller().arrange({});
  frontEnd_.advance(5);
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(kLastServer)));
}

TEST_F(GpuRows, AskAboutTheFirstRowsOfTheOrder) {
  constexpr int kLast = 29;
  for (int pid = 10; pid <= kLast; ++pid) addProcess(pid, "ordinary", 100);
  addProcess(40, "aardvark", 60).startTime = 99;
  start();
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(40)));
  for (const SortBy sortBy : {SortBy::name, SortBy::start}) {
    controller().arrange({.sortBy = sortBy});
    frontEnd_.advance(5);
    EXPECT_THAT(machine().pidsOnGpus, Contains(40));
    EXPECT_THAT(machine().pidsOnGpus, Not(Contains(kLast)));
  }
  controller().arrange({.sortBy = SortBy::gpu});
  frontEnd_.advance(5);
  EXPECT_THAT(machine().pidsOnGpus, Contains(kLast)) << "who is first is not known before";
}

TEST_F(GpuRows, OfACutSectionAreAskedAboutWhileItsSubmenuIsOpen) {
  addCards(1);
  for (int pid = 10; pid < 30; ++pid) addProcess(pid, "ordinary", 100).identity = pid;
  start();
  openMenu();
  // Now, as the menu's figures stand: the scripted cards tell only of those that are asked.
  ASSERT_THAT(machine().pidsOnGpus, Not(Contains(29)));
  const MenuItem& more = row("… and 14 more");
  const auto last = std::find_if(more.submenu.begin(), more.submenu.end(), [](const auto& item) {
    return item.process && item.process->pid == 29;
  });
  ASSERT_NE(last, more.submenu.end());
  EXPECT_EQ(shownTitle(*last), "ordinary  ·   100 MB");
  use(29, kGB);
  machine().find(29)->footprintMB = 200;

  controller().submenuWillOpen(more);
  frontEnd_.advance(0);
  EXPECT_THAT(machine().pidsOnGpus, IsSupersetOf({1, 29}));
  EXPECT_EQ(shownTitle(*last), "ordinary  ·   100 MB  ·  GPU  1.0 GB") << "all else stays";
  EXPECT_EQ(frontEnd_.titleChanges, 1);
  machine().gpus.uses.back().bytes = 2 * kGB;
  frontEnd_.advance(5);
  EXPECT_EQ(shownTitle(*last), "ordinary  ·   100 MB  ·  GPU  2.0 GB");
  EXPECT_EQ(frontEnd_.titleChanges, 2);
  frontEnd_.advance(5);
  EXPECT_EQ(frontEnd_.titleChanges, 2) << "nothing new";

  machine().find(29)->footprintMB = 100;
  closeMenu();
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(29)));
}

TEST_F(GpuRows, AreNotAskedAboutWhenTheMenuHasClosedAtOnce) {
  for (int pid = 10; pid < 30; ++pid) addProcess(pid, "ordinary", 100).identity = pid;
  start();
  openMenu();
  controller().submenuWillOpen(row("… and 14 more"));
  closeMenu();
  const int listings = machine().pidListings;
  frontEnd_.advance(0);
  EXPECT_EQ(machine().pidListings, listings);
}

TEST_F(GpuRows, HaveATrackBelowTheStrip) {
  addCards(2);
  addUses();
  start();
  const auto strip = stripOf(menu());
  ASSERT_TRUE(strip->gpu);
  EXPECT_NEAR(strip->gpu->pressure, 77.0 / 160, 1e-9);
  ASSERT_EQ(strip->gpu->segments.size(), 3U);
  EXPECT_EQ(strip->gpu->segments[0].pid, 2);
  EXPECT_EQ(strip->gpu->segments[0].color, *row(2).dot);
  EXPECT_NEAR(strip->gpu->segments[1].fraction, 2.0 / 160, 1e-9);
  // The strip itself is the machine's alone.
  EXPECT_EQ(strip->segments.size(), 2U);
  EXPECT_EQ(strip->pressure, 0.5);
  EXPECT_EQ(strip->itemHeight(), MemoryPressureView::kItemHeight + MemoryPressureView::kGpuHeight);
}

TEST_F(GpuRows, AreDrawnAnewInTheTrackOfAnOpenMenuAlone) {
  addCards(1);
  addUses();
  start();
  openMenu();
  const auto before = titles();
  const int drawn = frontEnd_.stripChanges;
  machine().gpus.devices[0].capacity->usedBytes = 60 * kGB;
  frontEnd_.advance(5);
  EXPECT_EQ(frontEnd_.stripChanges, drawn + 1);
  EXPECT_EQ(stripOf(menu())->gpu->pressure, 0.75);
  EXPECT_EQ(titles(), before);
}

TEST_F(GpuRows, HaveTheLettersOfTheStripAbove) {
  addCards(1);
  addUses();
  start();
  const auto strip = stripOf(menu());
  EXPECT_EQ(gpuSegmentLetter(*strip, 0), 'B');  // llama-server
  EXPECT_EQ(gpuSegmentLetter(*strip, 1), 'C');  // blender, which the strip doesn't show
  EXPECT_EQ(gpuSegmentLetter(*strip, 2), 'A');  // firefox
  EXPECT_EQ(segmentTag(*strip, 2), "  [B]");
  EXPECT_EQ(segmentTag(*strip, 3), "  [C]");
  const std::string text = menuText(menu());
  EXPECT_THAT(text, HasSubstr("]  50%\n[BBBBBBBBBBBBBBBBBBCA····················]  48%  GPU\n"));
  EXPECT_THAT(stripDescription(*strip),
              EndsWith("; GPU memory 48 percent used: LM Studio: LLM 36.1 GB, blender 2.0 GB, "
                       "firefox 512 MB"));
}

TEST_F(GpuRows, StandInTheShortMenuToo) {
  addCards(1);
  addUses();
  start();
  const Menu menu = ShortMenu::of(this->menu(), ShortMenu::Room::little);
  const auto line = [&](const std::string& title) {
    return *std::find_if(menu.items.begin(), menu.items.end(),
                         [&](const MenuItem& item) { return item.title == title; });
  };
  EXPECT_EQ(line("Largest  700 MB  firefox").submenu.size(), 2U);
  EXPECT_EQ(line("Largest on GPU  36.1 GB  LM Studio: LLM").submenu.size(), 3U);
}

TEST_F(GpuRows, OfNobodyNeededNoLineOfTheShortMenusTop) {
  // Nobody is large in memory: the line of the cards is not taken for that.
  machine().processes.clear();
  addProcess(2, "llama-server", 60);
  addCards(1);
  use(2, kGB);
  start();
  const Menu menu = ShortMenu::of(this->menu(), ShortMenu::Room::little);
  int lines = 0;
  for (const MenuItem& item : menu.items) lines += item.title.starts_with("Largest on GPU") ? 1 : 0;
  EXPECT_EQ(lines, 1);
}

}  // namespace
