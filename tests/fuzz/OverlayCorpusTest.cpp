// The inputs that fuzzers of overlays began with, and those that once broke something: none does any more.
#include "tests/fuzz/CorpusReplay.h"
#include "tests/fuzz/Properties.h"

TEST(OverlayCorpus, OfAnswersIsReadAlikeInBothWays)
{
    replay("answers", checkAnswers);
}

TEST(OverlayCorpus, OfHostsThatDoAsTheyLikeLeavesNothingBehind)
{
    replay("overlays", checkOverlays);
}

TEST(OverlayCorpus, OfAnswersIsShownAsANaiveAccountHasThem)
{
    replay("books", checkBooks);
}
