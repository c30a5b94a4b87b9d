#include "terminal/bars/LedgerComparison.h"
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>

namespace Terminal {
namespace {

bool always()
{
    return true;
}

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
    /// The words of each start, a line each.
    std::string started() const
    {
        QFile file(folder() + QStringLiteral("/started"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
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
    LedgerComparison comparison({module(), QStringLiteral("a.db")}, 52, always);
    for (int i = 0; i < 50; ++i) {
        const QByteArray code = QByteArray::number(601000 + i);
        ASSERT_TRUE(comparison.of(planOf(code.constData(), Trading::Market::Shanghai)));
    }
    EXPECT_EQ(started(), "trades --json\n");
    const auto wrong = comparison.of(planOf("000001", Trading::Market::Shenzhen));
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong.value().warnings.size(), 1) << "99 yuan lie outside of the day";
    const auto right = comparison.of(planOf("600519", Trading::Market::Shanghai));
    ASSERT_TRUE(right);
    EXPECT_EQ(right.value().warnings, QStringList());
    EXPECT_EQ(started(), "trades --json\n");
}

TEST_F(LedgerComparisonWithAModule, AsksForTheTradesOfOneFilesSecurityAlone)
{
    LedgerComparison comparison({module(), QStringLiteral("a.db")}, 1, always);
    const auto wrong = comparison.of(planOf("000001", Trading::Market::Shenzhen));
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong.value().warnings.size(), 1);
    EXPECT_EQ(started(), "trades --json --code 000001\n");
}

TEST_F(LedgerComparisonWithAModule, EndsAModuleThatTakesItsTimeWhenItIsStopped)
{
    const QString program = write(QStringLiteral("slow.sh"), "#!/bin/sh\necho '['\nexec sleep 600\n");
    QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
    int asked = 0;
    QElapsedTimer sinceStop;
    LedgerComparison comparison({program, QStringLiteral("a.db")}, 2, [&] {
        if (++asked == 3) {
            sinceStop.start();
        }
        return asked < 3;
    });
    EXPECT_FALSE(comparison.of(planOf("000001", Trading::Market::Shenzhen)));
    EXPECT_EQ(asked, 3);
    EXPECT_LT(sinceStop.elapsed(), 5000) << "and not the ten minutes of the module";
}

TEST_F(LedgerComparisonWithAModule, TakesAListThatComesLateAndInPieces)
{
    const QString program =
        write(QStringLiteral("late.sh"), "#!/bin/sh\nsleep 0.2\necho '['\nsleep 0.2\necho ']'\n");
    QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
    LedgerComparison comparison({program, QStringLiteral("a.db")}, 2, always);
    const auto compared = comparison.of(planOf("000001", Trading::Market::Shenzhen));
    EXPECT_TRUE(compared) << qPrintable(compared.error());
}

TEST_F(LedgerComparisonWithAModule, TakesNoListThatHasNoEnd)
{
    const QString program =
        write(QStringLiteral("half.sh"),
              "#!/bin/sh\necho '['\necho '{\"date\":\"2024-01-02\",\"code\":\"000001\"},'\n");
    QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
    LedgerComparison comparison({program, QStringLiteral("a.db")}, 2, always);
    EXPECT_FALSE(comparison.of(planOf("000001", Trading::Market::Shenzhen)));
}

TEST_F(LedgerComparisonWithAModule, FailsForAllWhereTheModuleFails)
{
    LedgerComparison comparison({QStringLiteral("/nowhere/trademodule"), QStringLiteral("a.db")}, 5, always);
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(comparison.of(planOf("000001", Trading::Market::Shenzhen)));
    }
}

} // namespace
} // namespace Terminal
