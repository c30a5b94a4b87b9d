#pragma once

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <memory>

/// An empty ledger of the test's own in a real database: each test program is linked with one kind.
/// Gone, with all it held, when the object goes.
class TestLedger
{
public:
    TestLedger();
    ~TestLedger();
    Q_DISABLE_COPY_MOVE(TestLedger)

    /// For Ledger or --ledger.
    QString location() const;

    /// Returns when a process is in the middle of writing an import, or false when `milliseconds` have
    /// passed. Other processes may be asked in between whether they still run.
    bool waitUntilWritten(std::chrono::milliseconds patience = std::chrono::minutes(1)) const;

    /// Why there is no such database here; empty when there is. Tests skip, loudly, with it.
    static QString unavailable();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
