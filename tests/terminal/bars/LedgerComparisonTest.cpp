#include "terminal/bars/LedgerComparison.h"
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"

#include <gtest/gtest.h>

#include <QFile>

namespace Terminal {
namespace {

/// A module that lists two trades, and notes each time that it is started.
class LedgerComparisonWithAModule : public DataFiles
{
protected:
    QString module()
    {
        const QString program =
            write(QStringLiteral("module.sh"),
                  "#!/bin/sh\necho $* >> '" + (folder() + QStringLiteral("/started")).toUtf8() +
                      "'\nprintf "
                      "'[\\n{\"date\":\"2024-01-02\",\"code\":\"000001\",\"market\":\"SZ\",\"price\":\"99\","
                      "\"quantity\":\"100\"},\\n{\"date\":\"2024-01-02\",\"code\":\"600519\",\"market\":"
                      "\"SH\",\"price\":"
                      "\"10.00\",\"quantity\":\"100\"}\\n]\\n'\n");
        QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
        return program;
    }
    int timesStarted() const
    {
        QFile file(folder() + QStringLiteral("/started"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }
    static BarImportPlan planOf(const char *code, Trading::Market market)
    {
        BarImportPlan plan;
        plan.security = {QLatin1String(code), market, QString()};
        plan.sheet.bars = someDays();
        return plan;
    }
};

TEST_F(LedgerComparisonWithAModule, AsksOnceForAllOfManySecurities)
{
    LedgerComparison comparison({module(), QStringLiteral("a.db")});
    for (int i = 0; i < 50; ++i) {
        const QByteArray code = QByteArray::number(601000 + i);
        ASSERT_TRUE(comparison.of(planOf(code.constData(), Trading::Market::Shanghai)));
    }
    EXPECT_LE(timesStarted(), 4);
    const auto wrong = comparison.of(planOf("000001", Trading::Market::Shenzhen));
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong.value().warnings.size(), 1) << "99 yuan lie outside of the day";
    const auto right = comparison.of(planOf("600519", Trading::Market::Shanghai));
    ASSERT_TRUE(right);
    EXPECT_EQ(right.value().warnings, QStringList());
    EXPECT_LE(timesStarted(), 4);
}

TEST_F(LedgerComparisonWithAModule, FailsForAllWhereTheModuleFails)
{
    LedgerComparison comparison({QStringLiteral("/nowhere/trademodule"), QStringLiteral("a.db")});
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(comparison.of(planOf("000001", Trading::Market::Shenzhen)));
    }
}

} // namespace
} // namespace Terminal
