#include "trademodule/import/ImportProfile.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/Business.h"
#include "trademodule/import/ColumnNames.h"

#include <QRegularExpression>

#include <algorithm>

namespace TradeModule {

namespace {

/// A line of a profile: "column NAME = KEY".
struct ProfileLine
{
    bool isColumn;
    QString name;
    QString key; ///< may be empty
};

std::optional<ProfileLine> parsed(const QString &line)
{
    static const QRegularExpression form(QStringLiteral("^(column|word)\\s+(\\S.*?)\\s*=\\s*(.*)$"));
    const auto match = form.match(line);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    ProfileLine parsed{match.captured(1) == QLatin1String("column"), match.captured(2),
                       match.captured(3).trimmed()};
    const QStringList keys = parsed.isColumn ? ImportProfile::columnKeys() : ImportProfile::wordKeys();
    return parsed.key.isEmpty() || keys.contains(parsed.key) ? std::optional(parsed) : std::nullopt;
}

QString lineOf(const char *kind, const QString &name, const QString &key)
{
    return QLatin1String(kind) + QLatin1Char(' ') + name + QLatin1String(" = ") + key;
}

} // namespace

ImportProfile ImportProfile::ofText(const QString &text)
{
    ImportProfile profile;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        const std::optional<ProfileLine> read = parsed(line);
        if (!read) {
            throw Error(
                translated("line %1 of the profile, \"%2\", must have the form \"column NAME = MEANING\" or "
                           "\"word WORD = MEANING\"; see import --suggest for the meanings")
                    .arg(i + 1)
                    .arg(line));
        }
        if (!read->key.isEmpty() && read->isColumn) {
            profile.m_columns.insert(ColumnNames::plainName(read->name), {read->name, read->key});
        } else if (!read->key.isEmpty()) {
            profile.m_words.insert(read->name, read->key);
        }
    }
    return profile;
}

/// With the names as they were written: a plain name may have a plain name of its own.
QString ImportProfile::text() const
{
    QStringList lines;
    for (const Meaning &column : m_columns) {
        lines.append(lineOf("column", column.name, column.key));
    }
    for (auto word = m_words.cbegin(); word != m_words.cend(); ++word) {
        lines.append(lineOf("word", word.key(), word.value()));
    }
    lines.sort();
    return lines.isEmpty() ? QString() : lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void ImportProfile::add(const ImportProfile &other)
{
    for (auto row = other.m_columns.cbegin(); row != other.m_columns.cend(); ++row) {
        m_columns.insert(row.key(), row.value());
    }
    for (auto row = other.m_words.cbegin(); row != other.m_words.cend(); ++row) {
        m_words.insert(row.key(), row.value());
    }
}

std::optional<Column> ImportProfile::columnOf(const QString &name) const
{
    const auto column = m_columns.constFind(name);
    return column == m_columns.constEnd() ? std::nullopt : ColumnNames::ofKey(column->key);
}

QStringList ImportProfile::columnKeys()
{
    QStringList keys;
    for (const ColumnNames::Spellings &row : ColumnNames::spellings()) {
        keys.append(QLatin1String(row.key));
    }
    keys.append(QStringLiteral("unused"));
    return keys;
}

QStringList ImportProfile::wordKeys()
{
    return Business::profileWords();
}

QString ImportProfile::suggestion(const QStringList &columns, const QStringList &words)
{
    QStringList lines{translated("# Write after each sign what it means, and import with --profile."),
                      QStringLiteral("# column: ") + columnKeys().join(QStringLiteral(" | ")),
                      QStringLiteral("# word: ") + wordKeys().join(QStringLiteral(" | "))};
    for (const QString &column : columns) {
        lines.append(QStringLiteral("column %1 = ").arg(column));
    }
    for (const QString &word : words) {
        lines.append(QStringLiteral("word %1 = ").arg(word));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace TradeModule
