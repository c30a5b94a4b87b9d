#include "tests/fuzz/Properties.h"
#include "tests/fuzz/TwoWays.h"

void checkAnswers(const QByteArray &bytes)
{
    const std::string difference = differenceOfWays(bytes);
    demand(difference.empty(), "read differently: " + difference);
}
