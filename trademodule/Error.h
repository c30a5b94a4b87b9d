#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace TradeModule {

/// Why something could not be done, as a sentence for the person who asked for it.
class Error : public std::exception
{
public:
    explicit Error(QString reason) : m_reason(std::move(reason)), m_bytes(m_reason.toUtf8()) {}

    const QString &reason() const { return m_reason; }
    const char *what() const noexcept override { return m_bytes.constData(); }

private:
    QString m_reason;
    QByteArray m_bytes;
};

/// The ledger's database could not do what it was asked.
class LedgerError : public Error
{
public:
    using Error::Error;
};

/// The same for a while only: the database cannot be reached, or is busy. What was asked may be tried again.
class LedgerUnavailable : public LedgerError
{
public:
    using LedgerError::LedgerError;
};

/// The connection was lost while a change was being completed: whether it was made is known when the database
/// is there again, see Database::isCommitted().
class OutcomeUnknown : public LedgerUnavailable
{
public:
    OutcomeUnknown(const QString &reason, qint64 mark) : LedgerUnavailable(reason), m_mark(mark) {}

    /// Of the change.
    qint64 mark() const { return m_mark; }

private:
    qint64 m_mark;
};

/// This process may not serve the ledger any more: another one does. It changes nothing and ends.
class LeaseLost : public LedgerError
{
public:
    using LedgerError::LedgerError;
};

} // namespace TradeModule
