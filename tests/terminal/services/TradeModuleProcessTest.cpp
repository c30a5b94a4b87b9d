// The trading module as a child of the terminal.
#include "terminal/services/TradeModuleProcess.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(TradeModuleChild, IsStartedAgainWhenItEnds)
{
    TradeModuleProcess module(QStringLiteral("false"), QStringLiteral("l"), QStringLiteral("b"),
                              QStringLiteral("en"), nullptr);
    int ends = 0;
    QObject::connect(&module, &TradeModuleProcess::failed, &module, [&ends] { ++ends; });
    module.start();
    EXPECT_TRUE(waitUntil([&ends] { return ends >= 2; }));
}

TEST(TradeModuleChild, IsNamedWhenItCannotBeStarted)
{
    TradeModuleProcess module(QStringLiteral("/nowhere/trademodule"), QStringLiteral("l"),
                              QStringLiteral("b"), QStringLiteral("en"), nullptr);
    QString reason;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&reason](const QString &text) { reason = text; });
    module.start();
    EXPECT_TRUE(waitUntil([&reason] { return reason.contains(QStringLiteral("/nowhere/trademodule")); }));
}

} // namespace
} // namespace Terminal
