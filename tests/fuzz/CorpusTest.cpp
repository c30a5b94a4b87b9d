// The inputs that fuzzers began with, and those that once broke something: none does any more.
#include "tests/fuzz/CorpusReplay.h"
#include "tests/fuzz/Properties.h"

TEST(Corpus, OfBarFilesIsReadAsPromised)
{
    replay("bars", checkBars);
}

TEST(Corpus, OfStatementsIsBookedAndTakenBackAsPromised)
{
    replay("statements", checkStatements);
}

TEST(Corpus, OfSettingsIsReadAsPromised)
{
    replay("settings", checkSettings);
}

TEST(Corpus, OfOrdersAndQuotesLeavesBooksThatAddUp)
{
    replay("exchange", checkExchange);
}

TEST(Corpus, OfBrokersThatDoAsTheyLikeLeavesTheClientWell)
{
    replay("client", checkClient);
}
