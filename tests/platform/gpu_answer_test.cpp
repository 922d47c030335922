#include "platform/linux/gpu_answer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "fakes/row_name.h"

namespace {

using platform::GpuAnswer;
using platform::GpuDevice;
using platform::GpuUse;
using platform::parseGpuAnswer;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

TEST(GpuAnswerOf, TellsCardsAndWhoHoldsThem) {
  const auto answer = parseGpuAnswer(
      "card 0000:65:00.0 85899345920 41016098816 NVIDIA H100 80GB HBM3\n"
      "card 0000:66:00.0 - - \n"
      "use 0 4711 38754320384\n"
      "end\n");
  ASSERT_TRUE(answer);
  EXPECT_FALSE(answer->error);
  EXPECT_THAT(answer->devices,
              ElementsAre(GpuDevice{"0000:65:00.0", "NVIDIA H100 80GB HBM3",
                                    platform::GpuCapacity{85899345920, 41016098816}},
                          GpuDevice{"0000:66:00.0", "", {}}));
  EXPECT_THAT(answer->uses, ElementsAre(GpuUse{4711, 0, 38754320384, 0}));
}

TEST(GpuAnswerOf, TellsWhyThereIsNone) {
  for (const int error : {9, -1}) {
    const auto answer = parseGpuAnswer("error " + std::to_string(error) + "\nend\n");
    ASSERT_TRUE(answer) << error;
    EXPECT_EQ(answer->error, error);
  }
}

TEST(GpuAnswerOf, MayBeThatThereIsNoCard) {
  const auto answer = parseGpuAnswer("end\n");
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->devices, IsEmpty());
}

TEST(GpuAnswerOf, HasNoMoreUsedThanThereIs) {
  const auto answer = parseGpuAnswer("card a 10 11 \nend\n");
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->devices, ElementsAre(GpuDevice{"a", "", platform::GpuCapacity{10, 10}}));
}

TEST(GpuAnswerOf, HasNamesThatAreText) {
  const auto answer = parseGpuAnswer("card a 10 1 \xFFx\nend\n");
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->devices, ElementsAre(Field(&GpuDevice::name, "\uFFFDx")));
}

struct LineRow {
  const char* name;
  const char* line;
};

class SenselessAnswer : public testing::TestWithParam<LineRow> {};

TEST_P(SenselessAnswer, IsNone) {
  EXPECT_FALSE(parseGpuAnswer("card a 10 1 \n" + std::string(GetParam().line) + "end\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Table, SenselessAnswer,
    testing::Values(LineRow{"AnotherWord", "hello\n"}, LineRow{"AnEmptyLine", "\n"},
                    LineRow{"NoLineEnd", "use 0 1 2"}, LineRow{"CardWithoutFigures", "card b\n"},
                    LineRow{"CardWithoutAPlace", "card  10 1 x\n"},
                    LineRow{"CardOfNothing", "card b 0 0 x\n"},
                    LineRow{"CardOfAHalf", "card b 10 - x\n"},
                    LineRow{"UseWithoutBytes", "use 0 1\n"}, LineRow{"UseOfMore", "use 0 1 2 3\n"},
                    LineRow{"NegativePid", "use 0 -1 2\n"},
                    LineRow{"ErrorWithoutNumber", "error\n"},
                    LineRow{"NumberTooLarge", "use 0 1 99999999999999999999999\n"}),
    rowName<LineRow>);

class ImpossibleUse : public testing::TestWithParam<LineRow> {};

TEST_P(ImpossibleUse, IsLeftOut) {
  const auto answer =
      parseGpuAnswer("card a 10 1 \n" + std::string(GetParam().line) + "use 0 7 8\nend\n");
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->uses, ElementsAre(GpuUse{7, 0, 8, 0}));
}

INSTANTIATE_TEST_SUITE_P(Table, ImpossibleUse,
                         testing::Values(LineRow{"NoSuchCard", "use 1 5 6\n"},
                                         LineRow{"PidZero", "use 0 0 6\n"},
                                         LineRow{"PidBeyondPids", "use 0 2147483648 6\n"},
                                         LineRow{"NoBytes", "use 0 5 0\n"},
                                         LineRow{"UnknownBytes", "use 0 5 18446744073709551615\n"}),
                         rowName<LineRow>);

/// Each byte that is no text is three once it is mended.
TEST(GpuAnswerOf, HasNoPlaceThatIsLongOnceMended) {
  EXPECT_TRUE(parseGpuAnswer("card " + std::string(85, '\x87') + " 10 1 x\nend\n"));
  EXPECT_FALSE(parseGpuAnswer("card " + std::string(86, '\x87') + " 10 1 x\nend\n"));
}

TEST(GpuAnswerOf, IsNoneBeforeItsEnd) {
  const std::string whole = "card a 10 1 x\nuse 0 1 2\nend\n";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(parseGpuAnswer(whole.substr(0, length))) << length;
  }
}

TEST(GpuAnswerOf, HasAnEndOfItsOwn) {
  EXPECT_FALSE(parseGpuAnswer("card a 10 1 end\n"));
}

TEST(GpuAnswerOf, IsBounded) {
  std::string cards;
  for (std::size_t i = 0; i < platform::kMostGpuCards; ++i) cards += "card a 10 1 x\n";
  EXPECT_TRUE(parseGpuAnswer(cards + "end\n"));
  EXPECT_FALSE(parseGpuAnswer(cards + "card a 10 1 x\nend\n"));
  EXPECT_FALSE(parseGpuAnswer(std::string(platform::kLongestGpuAnswer, '\n') + "end\n"));
}

TEST(GpuAnswerOf, IsWhatWasWritten) {
  std::mt19937_64 random(4711);
  const auto below = [&](std::uint64_t limit) { return random() % limit; };
  for (int round = 0; round < 500; ++round) {
    GpuAnswer written;
    std::string text;
    for (std::uint64_t i = below(5); i > 0; --i) {
      const std::uint64_t total = 1 + below(1ULL << 40);
      GpuDevice card{.id = "card" + std::to_string(below(100)),
                     .name = "A name " + std::string(below(9), 'x')};
      if (below(3) > 0) card.capacity = {total, below(total + 1)};
      text += platform::cardLine(card);
      written.devices.push_back(card);
    }
    for (std::uint64_t i = written.devices.empty() ? 0 : below(20); i > 0; --i) {
      const GpuUse use{static_cast<std::int32_t>(1 + below(1 << 22)),
                       static_cast<std::size_t>(below(written.devices.size())),
                       1 + below(1ULL << 40), 0};
      text += platform::useLine(use);
      written.uses.push_back(use);
    }
    const auto read = parseGpuAnswer(text + "end\n");
    ASSERT_TRUE(read) << text;
    EXPECT_EQ(read->devices, written.devices);
    EXPECT_EQ(read->uses, written.uses);
  }
}

TEST(GpuAnswerOf, ANameMakesNoLineOfItsOwn) {
  const auto answer = parseGpuAnswer(platform::cardLine({.id = "a", .name = "x\nend"}) + "end\n");
  ASSERT_TRUE(answer);
  EXPECT_THAT(answer->devices, ElementsAre(Field(&GpuDevice::name, "x end")));
}

}  // namespace
