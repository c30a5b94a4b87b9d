#include "terminal/intake/BarsReport.h"

#include "terminal/intake/IntakeQuestion.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QRegularExpression>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarsReport", source);
}

QString word(const QJsonObject &object, const char *key)
{
    return object[QLatin1String(key)].toString();
}

QStringList words(const QJsonValue &array)
{
    QStringList all;
    for (const auto &value : array.toArray()) {
        all.append(value.toString());
    }
    return all;
}

QStringList factsOf(const QJsonObject &planned)
{
    const bool isOfMinutes = planned[QLatin1String("minutes")].toBool();
    QStringList facts{(isOfMinutes ? text("%1 bars of minutes, %2 to %3") : text("%1 bars of days, %2 to %3"))
                          .arg(planned[QLatin1String("bars")].toInt())
                          .arg(word(planned, "from"), word(planned, "to")),
                      word(planned, "volume")};
    if (!word(planned, "ledger").isEmpty()) {
        facts.append(word(planned, "ledger"));
    }
    const QJsonArray changes = planned[QLatin1String("changes")].toArray();
    for (const auto &change : changes) {
        facts.append(
            QStringLiteral("%1: %2").arg(word(change.toObject(), "file"), word(change.toObject(), "change")));
    }
    const int unnamed = planned[QLatin1String("changecount")].toInt() - changes.size();
    if (unnamed > 0) {
        facts.append(text("and %1 more files").arg(unnamed));
    }
    return facts;
}

/// What stands above a column of the folder's own form.
QString columnTitle(const QString &column)
{
    static const QHash<QString, const char *> titles = {
        {QStringLiteral("date"), QT_TRANSLATE_NOOP("BarsReport", "Date")},
        {QStringLiteral("time"), QT_TRANSLATE_NOOP("BarsReport", "Time")},
        {QStringLiteral("open"), QT_TRANSLATE_NOOP("BarsReport", "Open")},
        {QStringLiteral("high"), QT_TRANSLATE_NOOP("BarsReport", "High")},
        {QStringLiteral("low"), QT_TRANSLATE_NOOP("BarsReport", "Low")},
        {QStringLiteral("close"), QT_TRANSLATE_NOOP("BarsReport", "Close")},
        {QStringLiteral("volume"), QT_TRANSLATE_NOOP("BarsReport", "Volume")},
    };
    const char *const title = titles.value(column, nullptr);
    return title == nullptr ? column : text(title);
}

/// "12: …" is how a compiler would say it.
QString withLine(const QString &reason)
{
    static const QRegularExpression line(QStringLiteral(u"^(\\d+)[:：]\\s*"));
    const auto found = line.match(reason);
    return found.hasMatch() ? text("Line %1: %2").arg(found.captured(1), reason.mid(found.capturedLength()))
                            : reason;
}

FileReport refusalOf(const QJsonObject &planned)
{
    FileReport report;
    // The list names the file.
    const QRegularExpression place(
        QStringLiteral(u"^%1[:：]\\s*").arg(QRegularExpression::escape(word(planned, "file"))));
    const QString reason = withLine(word(planned, "refused").remove(place));
    report.refusals = QStringList(inWordsOfTheWindow(reason, FileKind::BarTable));
    report.asks = words(planned[QLatin1String("asks")]);
    report.isUnknown = report.asks.isEmpty();
    return report;
}

} // namespace

FileReport barsReport(const QJsonObject &planned)
{
    if (planned.contains(QLatin1String("refused"))) {
        return refusalOf(planned);
    }
    FileReport report;
    report.heading = QStringLiteral("%1 %2").arg(word(planned, "security"), word(planned, "name"));
    report.facts = factsOf(planned);
    report.warnings = words(planned[QLatin1String("warnings")]);
    for (const QString &column : words(planned[QLatin1String("columns")])) {
        report.columns.append(columnTitle(column));
    }
    for (const auto &row : planned[QLatin1String("rows")].toArray()) {
        report.rows.push_back(words(row));
    }
    report.codes = QStringList(word(planned, "code"));
    return report;
}

} // namespace Terminal
