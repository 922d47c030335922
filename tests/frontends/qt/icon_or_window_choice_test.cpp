#include "frontends/qt/icon_or_window_choice.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct PresenceRow {
  const char* name;
  PresenceFacts facts;
  PresenceKind kind;
};

class PresenceTest : public testing::TestWithParam<PresenceRow> {};

TEST_P(PresenceTest, IsChosenByWhatIsThere) {
  EXPECT_EQ(choosePresence(GetParam().facts), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Facts, PresenceTest,
    testing::Values(
        PresenceRow{"NothingKnownYet", {}, PresenceKind::undecided},
        PresenceRow{
            "EmbeddingTrayWhileAHostMayAnswer", {.embeddingTray = true}, PresenceKind::undecided},
        PresenceRow{"Host", {.hostDecided = true, .hostShowsIcon = true}, PresenceKind::hostIcon},
        PresenceRow{"HostBeforeEmbeddingTray",
                    {.hostDecided = true, .hostShowsIcon = true, .embeddingTray = true},
                    PresenceKind::hostIcon},
        PresenceRow{"EmbeddingTrayAlone",
                    {.hostDecided = true, .embeddingTray = true},
                    PresenceKind::embeddedIcon},
        PresenceRow{"Neither", {.hostDecided = true}, PresenceKind::window},
        PresenceRow{"HostThatNeverAnswers", {.patienceIsOver = true}, PresenceKind::window},
        PresenceRow{"HostThatNeverAnswersBesideEmbeddingTray",
                    {.embeddingTray = true, .patienceIsOver = true},
                    PresenceKind::embeddedIcon},
        PresenceRow{"HostThatAnswersLate",
                    {.hostDecided = true, .hostShowsIcon = true, .patienceIsOver = true},
                    PresenceKind::hostIcon}),
    rowName<PresenceRow>);

}  // namespace
