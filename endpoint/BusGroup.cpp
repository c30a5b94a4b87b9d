#include "endpoint/BusGroup_p.h"

#include <QFile>
#include <QTextCodec>

#include <optional>

namespace LocalCommunication {

namespace {

const char byteOrderMark[] = "\xEF\xBB\xBF";

/// Nothing when it is not UTF-8.
std::optional<QString> decoded(const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    const bool isValid = state.invalidChars == 0 && state.remainingChars == 0;
    return isValid ? std::optional<QString>(text) : std::nullopt;
}

bool isQuoted(const QString &text)
{
    return text.size() >= 2 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
}

} // namespace

BusGroup::BusGroup(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return;
    }
    const QByteArray content = file.readAll();
    const bool isMarked = content.startsWith(byteOrderMark);
    const QList<QByteArray> lines = content.mid(isMarked ? 3 : 0).split('\n');
    for (int i = 0; i < lines.size() && m_problem.isEmpty(); ++i) {
        m_lineNumber = i + 1;
        takeLine(lines[i].trimmed());
    }
}

void BusGroup::takeLine(const QByteArray &bytes)
{
    const std::optional<QString> line = decoded(bytes);
    if (!line) {
        m_problem = QStringLiteral("line %1 is not UTF-8").arg(m_lineNumber);
        return;
    }
    const int sign = line->indexOf(QLatin1Char('='));
    if (line->isEmpty() || line->startsWith(QLatin1Char(';'))) {
        return;
    }
    if (*line == QLatin1String("[bus]")) {
        m_isInside = true;
    } else if (line->startsWith(QLatin1Char('['))) {
        m_problem = QStringLiteral("the group %1 is unknown; expected [bus]").arg(*line);
    } else if (sign <= 0) {
        m_problem =
            QStringLiteral("line %1 ('%2') is not a line of an INI file; expected a group [bus] with lines "
                           "such as url=…")
                .arg(m_lineNumber)
                .arg(*line);
    } else {
        takeKey(line->left(sign).trimmed(), line->mid(sign + 1).trimmed());
    }
}

void BusGroup::takeKey(const QString &key, const QString &text)
{
    const QString start = QStringLiteral("key 'bus/%1' ").arg(key);
    const QString value = isQuoted(text) ? text.mid(1, text.size() - 2) : text;
    if (!m_isInside) {
        m_problem = QStringLiteral("key '%1' stands before the group [bus]").arg(key);
    } else if (m_values.contains(key)) {
        m_problem = start + QStringLiteral("is given twice");
    } else if (value.isEmpty()) {
        m_problem = start + QStringLiteral("has no value; leave the line out, or give one");
    } else if (text.contains(QLatin1Char(';')) && !isQuoted(text)) {
        m_problem =
            start + QStringLiteral("has a semicolon in '%1'; a comment needs a line of its own, and a value "
                                   "with a semicolon double quotes")
                        .arg(text);
    } else {
        m_keys.append(key);
        m_values.insert(key, value);
    }
}

} // namespace LocalCommunication
