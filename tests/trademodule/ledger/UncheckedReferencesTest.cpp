// Tables of a SQLite ledger that are made anew under those that refer to them.
#include "trademodule/ledger/UncheckedReferences.h"

#include "trademodule/Error.h"
#include "trademodule/ledger/Ledger.h"
#include "trademodule/ledger/LedgerSchema.h"

#include <gmock/gmock.h>

#include <QLibrary>
#include <QTemporaryDir>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

/// As long as it lives, every connection to SQLite that is opened is a defensive one, as some systems build
/// it: the texts of tables cannot be edited.
class DefensiveSqlite
{
public:
    DefensiveSqlite()
    {
        if (isKnown()) {
            function<int(void (*)())>("sqlite3_auto_extension")(extension());
        }
    }
    ~DefensiveSqlite()
    {
        if (isKnown()) {
            function<int(void (*)())>("sqlite3_cancel_auto_extension")(extension());
        }
    }
    Q_DISABLE_COPY_MOVE(DefensiveSqlite)

    /// False where Qt has a SQLite of its own.
    static bool isKnown() { return resolve("sqlite3_db_config") != nullptr; }

private:
    static QFunctionPointer resolve(const char *name)
    {
        return QLibrary::resolve(QStringLiteral("sqlite3"), 0, name);
    }

    template <typename Signature>
    static Signature *function(const char *name)
    {
        return reinterpret_cast<Signature *>(resolve(name));
    }

    static int beDefensive(void *database, char ** /*error*/, const void * /*functions*/)
    {
        constexpr int defensive = 1010;
        return function<int(void *, int, ...)>("sqlite3_db_config")(database, defensive, 1, nullptr);
    }

    /// SQLite's type for a function of any kind.
    static void (*extension())() { return reinterpret_cast<void (*)()>(&beDefensive); }
};

class UncheckedReferencesTest : public ::testing::Test
{
protected:
    QString path() const { return m_directory.filePath(QStringLiteral("account.db")); }

    static bool isChecked(Database *database)
    {
        Rows row = database->run(QStringLiteral("PRAGMA foreign_keys"));
        return row.next() && row.value(0).toBool();
    }

private:
    QTemporaryDir m_directory;
};

} // namespace

TEST_F(UncheckedReferencesTest, LastAsLongAsTheObject)
{
    Database database(path());
    ASSERT_TRUE(isChecked(&database));
    {
        const UncheckedReferences unchecked(&database);
        EXPECT_FALSE(isChecked(&database));
    }
    EXPECT_TRUE(isChecked(&database));
}

TEST_F(UncheckedReferencesTest, AreCheckedAgainAfterAMigration)
{
    {
        Database old(path());
        migrateSchema(&old, 4);
    }
    {
        Ledger trial(path(), Ledger::Mode::DryRun);
        EXPECT_FALSE(isChecked(trial.database()));
    }

    Ledger ledger(path());
    EXPECT_TRUE(isChecked(ledger.database()));
}

TEST_F(UncheckedReferencesTest, NeedNoTablesTextToBeEdited)
{
    if (!DefensiveSqlite::isKnown()) {
        GTEST_SKIP() << "THE SYSTEM'S SQLITE IS NOT the one that Qt uses: it cannot be made defensive";
    }
    {
        Database old(path());
        migrateSchema(&old, 5);
    }
    const DefensiveSqlite defensive;
    {
        Database old(path());
        old.run(QStringLiteral("PRAGMA writable_schema = ON"));
        ASSERT_THROW(old.run(QStringLiteral("UPDATE sqlite_master SET sql = sql")), LedgerError);
    }

    Ledger ledger(path());

    EXPECT_EQ(schemaVersion(ledger.database()), currentSchemaVersion());
}

TEST_F(UncheckedReferencesTest, ThatAreBrokenKeepALedgerFromBeingMigrated)
{
    {
        Database old(path());
        migrateSchema(&old, 5);
        const UncheckedReferences unchecked(&old);
        old.run(QStringLiteral("INSERT INTO holding VALUES (4711, 100, 1.0, 0)"));
    }

    try {
        Ledger ledger(path());
        FAIL() << "migrated";
    } catch (const LedgerError &error) {
        EXPECT_THAT(error.what(), HasSubstr("table holding refers to one of security"));
    }
    Database old(path());
    EXPECT_EQ(schemaVersion(&old), 5);
}

} // namespace TradeModule
