#include "terminal/services/BrokerProblem.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace Terminal {

namespace {

/// As the bus client has them in English, which is what its log says.
const char *const known[] = {
    QT_TRANSLATE_NOOP("BrokerProblem",
                      "The program 'mosquitto' is not installed; install it with: apt install "
                      "mosquitto, or: brew install mosquitto"),
    QT_TRANSLATE_NOOP("BrokerProblem", "The broker '%1' cannot be started: %2"),
    QT_TRANSLATE_NOOP("BrokerProblem", "The broker does not start: %1"),
    QT_TRANSLATE_NOOP("BrokerProblem", "The broker does not start"),
    QT_TRANSLATE_NOOP("BrokerProblem", "The broker did not answer any more; another one is started"),
    QT_TRANSLATE_NOOP("BrokerProblem", "the lock file '%1' cannot be used: %2; remove it"),
    QT_TRANSLATE_NOOP("BrokerProblem", "the bus directory '%1' belongs to another user; remove it"),
    QT_TRANSLATE_NOOP("BrokerProblem", "the bus directory '%1' is open to other users; run: chmod 700 '%1'"),
    QT_TRANSLATE_NOOP("BrokerProblem", "'%1' is not a directory itself (a link is not accepted); remove it"),
    QT_TRANSLATE_NOOP("BrokerProblem", "the bus directory '%1': %2"),
    QT_TRANSLATE_NOOP("BrokerProblem",
                      "There is no runtime directory for the bus; XDG_RUNTIME_DIR must name a "
                      "directory that only its owner may enter"),
    QT_TRANSLATE_NOOP("BrokerProblem", "The bus address '%1' is not a directory; it is the directory of the "
                                       "terminal's program"),
};

/// What stands in `problem` where the text has %1 and %2; no match when it is another text.
QRegularExpressionMatch match(const QString &text, const QString &problem)
{
    QString pattern = QRegularExpression::escape(text);
    for (const QString &place : {QStringLiteral("1"), QStringLiteral("2")}) {
        const QString escaped = QStringLiteral("\\%") + place;
        const int first = pattern.indexOf(escaped);
        if (first >= 0) {
            pattern.replace(first, escaped.size(), QStringLiteral("(.*)"));
            pattern.replace(escaped, QStringLiteral("\\") + place); // the same once more
        }
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::DotMatchesEverythingOption)
        .match(problem);
}

/// A sentence begins with a capital letter.
QString asSentence(QString text)
{
    return text.isEmpty() ? text : text.replace(0, 1, text.at(0).toUpper());
}

} // namespace

QString brokerProblemText(const QString &problem)
{
    for (const char *const text : known) {
        const auto found = match(QString::fromUtf8(text), problem);
        if (found.hasMatch()) {
            QString told = QCoreApplication::translate("BrokerProblem", text);
            for (int place = 1; place <= found.lastCapturedIndex(); ++place) {
                told.replace(QStringLiteral("%%1").arg(place), found.captured(place));
            }
            return asSentence(told);
        }
    }
    return asSentence(problem);
}

} // namespace Terminal
