#pragma once

#include "trademodule/import/StatementColumns.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace TradeModule {

/// How one broker names what the import does not know: columns, and words for kinds of business. A user makes
/// it once from the import's own suggestion; it is kept with the ledger.
///
/// It is a text of lines: "column 业务日 = date", "word 证券买断 = buy"; "#" starts a remark. What stands
/// after the sign is one of columnKeys() or wordKeys(); an empty one says nothing yet.
class ImportProfile
{
public:
    ImportProfile() = default;
    /// An Error names the line that cannot be understood.
    static ImportProfile ofText(const QString &text);

    /// The text again, sorted.
    QString text() const;
    bool isEmpty() const { return m_columns.isEmpty() && m_words.isEmpty(); }
    /// Takes over what another says, which wins.
    void add(const ImportProfile &other);

    /// What the user says that a column means, by its plain name.
    std::optional<Column> columnOf(const QString &name) const;
    /// The known word that the user says another stands for.
    QString wordFor(const QString &word) const { return m_words.value(word, word); }

    static QStringList columnKeys();
    static QStringList wordKeys();

    /// A profile to fill in: columns and words that the import does not know.
    static QString suggestion(const QStringList &columns, const QStringList &words);

private:
    /// What a column means, under its name as the user wrote it.
    struct Meaning
    {
        QString name;
        QString key;
    };

    QHash<QString, Meaning> m_columns; // by plain names
    QHash<QString, QString> m_words;
};

} // namespace TradeModule
