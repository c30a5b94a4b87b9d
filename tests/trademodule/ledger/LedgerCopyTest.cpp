// What is left of an older ledger when it is brought up to date.
#include "trademodule/ledger/LedgerCopy.h"

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/LedgerSchema.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace TradeModule {

namespace {

class LedgerCopy : public ::testing::Test
{
protected:
    static constexpr int oldVersion = 4;

    void SetUp() override
    {
        Database database(path());
        migrateSchema(&database, oldVersion);
        database.run(QStringLiteral("UPDATE account SET cash = 4711"));
    }

    QString path() const { return m_directory.filePath(QStringLiteral("it's mine.db")); }
    QString copy() const { return path() + QStringLiteral(".version-4"); }

    static int cashIn(const QString &path)
    {
        Database database(path);
        EXPECT_EQ(schemaVersion(&database), oldVersion);
        Rows row = database.run(QStringLiteral("SELECT cash FROM account"));
        return row.next() ? row.value(0).toInt() : 0;
    }

private:
    QTemporaryDir m_directory;
};

} // namespace

TEST_F(LedgerCopy, LiesBesideTheLedgerAsItWas)
{
    const Ledger ledger(path());

    EXPECT_EQ(cashIn(copy()), 4711);
    EXPECT_EQ(QFile::permissions(copy()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(LedgerCopy, DoesNotTakeThePlaceOfAnother)
{
    QFile other(copy());
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("mine");
    other.close();

    const Ledger ledger(path());

    EXPECT_EQ(QFileInfo(copy()).size(), 4);
    EXPECT_EQ(cashIn(copy() + QStringLiteral(".2")), 4711);
}

TEST_F(LedgerCopy, GoesWhenTheLedgerStaysAsItWas)
{
    Database(path()).run(QStringLiteral("CREATE TABLE import_profile (id INTEGER)")); // a step makes it, too

    EXPECT_THROW(const Ledger ledger(path()), LedgerError);

    EXPECT_FALSE(QFile::exists(copy()));
}

TEST_F(LedgerCopy, IsNotMadeOfALedgerThatIsUpToDate)
{
    const Ledger ledger(path());
    const Ledger again(path());

    EXPECT_FALSE(QFile::exists(copy() + QStringLiteral(".2")));
    EXPECT_FALSE(QFile::exists(QStringLiteral("%1.version-%2").arg(path()).arg(currentSchemaVersion())));
}

TEST_F(LedgerCopy, IsNotMadeByADryRun)
{
    const Ledger ledger(path(), Ledger::Mode::DryRun);

    EXPECT_FALSE(QFile::exists(copy()));
}

} // namespace TradeModule
