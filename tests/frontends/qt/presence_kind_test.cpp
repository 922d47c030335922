#include "frontends/qt/presence_kind.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct PresenceRow {
  const char* name;
  PresenceFacts facts;
  PresenceKind kind;
};

class PresenceTest : public testing::TestWithParam<PresenceRow> {};

TEST_P(PresenceTest, isChosenByWhatIsThere) {
  EXPECT_EQ(choosePresence(GetParam().facts), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Facts, PresenceTest,
    testing::Values(
        PresenceRow{"nothingKnownYet", {}, PresenceKind::undecided},
        PresenceRow{
            "embeddingTrayWhileAHostMayAnswer", {.embeddingTray = true}, PresenceKind::undecided},
        PresenceRow{"host", {.hostDecided = true, .hostShowsIcon = true}, PresenceKind::hostIcon},
        PresenceRow{"hostBeforeEmbeddingTray",
                    {.hostDecided = true, .hostShowsIcon = true, .embeddingTray = true},
                    PresenceKind::hostIcon},
        PresenceRow{"embeddingTrayAlone",
                    {.hostDecided = true, .embeddingTray = true},
                    PresenceKind::embeddedIcon},
        PresenceRow{"neither", {.hostDecided = true}, PresenceKind::window},
        PresenceRow{"hostThatNeverAnswers", {.patienceIsOver = true}, PresenceKind::window},
        PresenceRow{"hostThatNeverAnswersBesideEmbeddingTray",
                    {.embeddingTray = true, .patienceIsOver = true},
                    PresenceKind::embeddedIcon},
        PresenceRow{"hostThatAnswersLate",
                    {.hostDecided = true, .hostShowsIcon = true, .patienceIsOver = true},
                    PresenceKind::hostIcon}),
    rowName<PresenceRow>);

}  // namespace
