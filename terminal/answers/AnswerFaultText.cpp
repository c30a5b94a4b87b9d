#include "terminal/answers/AnswerFaultText.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

using Trading::AnswerFinding;

constexpr int longestValue = 40;

QString text(const char *source)
{
    return QCoreApplication::translate("AnswerFaultText", source);
}

/// In the words of the table of messages.
QString tableText(const char *source)
{
    return QCoreApplication::translate("MessageTable", source);
}

QString shortened(const QString &value)
{
    return value.size() <= longestValue ? value : value.left(longestValue) + QStringLiteral(u"…");
}

QString otherThan(const AnswerFinding &finding, const char *expected)
{
    return text("\"%1\" is %2, but must be: %3")
        .arg(finding.key, shortened(finding.value), tableText(expected));
}

/// What is wrong with the key.
QString keyFault(const AnswerFinding &finding)
{
    const QString value = shortened(finding.value);
    switch (finding.kind) {
    case AnswerFinding::Missing:
        return text("\"%1\" is missing").arg(finding.key);
    case AnswerFinding::WrongType:
        return otherThan(finding, Trading::wordOf(finding.type));
    case AnswerFinding::NotAllowed:
        return otherThan(finding, Trading::wordOf(finding.form));
    case AnswerFinding::OtherScreen:
        return text("\"%1\" names another screen").arg(finding.key);
    case AnswerFinding::OtherMarket:
        return text("\"%1\" is %2, another market's").arg(finding.key, value);
    case AnswerFinding::OtherChannel:
        return text("the answer came on channel \"%1\"").arg(value);
    case AnswerFinding::Repeated:
        return text("the answer came twice");
    case AnswerFinding::Unknown:
        return text("\"%1\" is %2, which nobody asked").arg(finding.key, value);
    case AnswerFinding::NotJson:
        return text("the answer is no JSON object: %1").arg(value);
    case AnswerFinding::Refused:
        return finding.value.isEmpty() ? text("refused, without a reason")
                                       : text("refused: %1").arg(finding.value);
    }
    return {};
}

/// What comes of it, where that is not said already.
QString consequence(const AnswerFinding &finding)
{
    const bool isSaid = finding.kind == AnswerFinding::Refused;
    return isSaid ? QString() : text("; %1").arg(tableText(Trading::wordOf(finding.effect)));
}

QString rowsText(const AnswerFinding &finding)
{
    return finding.rows > 0 ? text(" (rows: %1)").arg(finding.rows) : QString();
}

} // namespace

QString faultText(const QString &command, const AnswerFinding &finding)
{
    const QString who = command.isEmpty() ? text("An answer of the trading module") : command;
    return text("%1: %2").arg(who, keyFault(finding) + rowsText(finding) + consequence(finding));
}

QStringList faultTexts(const Trading::CheckedAnswer &answer)
{
    QStringList texts;
    std::transform(answer.findings.begin(), answer.findings.end(), std::back_inserter(texts),
                   [&answer](const AnswerFinding &finding) { return faultText(answer.command, finding); });
    return texts;
}

} // namespace Terminal
