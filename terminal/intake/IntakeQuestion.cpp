#include "terminal/intake/IntakeQuestion.h"

#include "terminal/data/SecurityCode.h"
#include "trading/CodeRanges.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("IntakeQuestion", source);
}

QString named(const char *name)
{
    return QLatin1String(name);
}

} // namespace

std::vector<IntakeQuestion> intakeQuestions()
{
    using Form = IntakeQuestion::Form;
    return {
        {FileKind::BarTable, named("code"), Form::Word, text("Security"), text("e.g. 600519.SH"), {}},
        {FileKind::BarTable,
         named("volume"),
         Form::Choice,
         text("Unit of the volume"),
         {},
         {{named("shares"), text("shares")}, {named("lots"), text("lots: 100 shares, or ten bonds")}}},
        {FileKind::BarTable, named("day"), Form::Word, text("Day"), text("yyyymmdd"), {}},
        {FileKind::BarTable,
         named("replace"),
         Form::Switch,
         text("Replace the bars that are there"),
         text("all days of this security in the folder"),
         {}},
        {FileKind::Statement, named("account"), Form::Choice, text("Account"), {}, {}},
        {FileKind::Statement,
         named("doubt"),
         Form::Choice,
         text("Entries in doubt"),
         {},
         {{named("same"), text("are those that are there")}, {named("new"), text("are new")}}},
        {FileKind::Statement,
         named("skip-bad"),
         Form::Switch,
         text("Leave these rows out"),
         text("and import the others"),
         {}},
        {FileKind::Statement, named("date"), Form::Word, text("Day"), text("yyyymmdd"), {}},
        {FileKind::Statement,
         named("securities"),
         Form::Word,
         text("List of securities"),
         text("a file code,market,name"),
         {}},
        {FileKind::Statement,
         named("profile"),
         Form::Profile,
         text("Columns and words of your broker"),
         text("Write after each = what it means."),
         {}},
    };
}

QString inWordsOfTheWindow(const QString &reason, FileKind kind)
{
    QString said = reason;
    for (const IntakeQuestion &question : intakeQuestions()) {
        if (question.kind == kind) {
            if (question.name == QLatin1String("code")) { // what to write there needs no name before it
                said.replace(QRegularExpression(QStringLiteral("--code ([0-9]{6}\\.[A-Z]{2})")),
                             QStringLiteral("\\1"));
            }
            said.replace(QRegularExpression(QStringLiteral("--%1\\b").arg(question.name)),
                         text("\"%1\"").arg(question.label));
        }
    }
    if (kind == FileKind::Statement) {
        said.replace(QLatin1String("--suggest"),
                     text("\"%1\"").arg(text("Columns and words of your broker")));
    }
    return said;
}

QString codeInName(const QString &path)
{
    static const QRegularExpression code(
        QStringLiteral(
            "(?<![0-9])(?:(sh|sz)[._]?)?([0-9]{6})(?![0-9])(?:[._](sh|sz|ss|xshg|xshe)(?![a-z]))?"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = code.match(QFileInfo(path).fileName());
    if (!match.hasMatch()) {
        return {};
    }
    const QString digits = match.captured(2);
    const QString market = (match.captured(1) + match.captured(3)).toLower();
    const auto usual = Trading::CodeRanges::of(digits);
    const auto named = SecurityCode::of(digits + QLatin1Char('.') + market);
    const auto found = !market.isEmpty() ? named
                       : usual           ? std::optional(SecurityCode{digits, usual->market})
                                         : std::nullopt;
    return found && Trading::isOnCharts(*found->market) ? found->text() : QString();
}

} // namespace Terminal
