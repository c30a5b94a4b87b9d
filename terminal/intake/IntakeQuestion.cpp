#include "terminal/intake/IntakeQuestion.h"

#include "terminal/data/BarStamp.h"
#include "terminal/data/FileNameWords.h"

#include <QCoreApplication>
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

/// Where a reason names an answer with its option, "--volume lots" or "--same": as the field has both.
QString withChoices(QString said, const IntakeQuestion &question)
{
    for (const auto &[answer, title] : question.choices) {
        said.replace(QRegularExpression(QStringLiteral("--(%1 )?%2\\b").arg(question.name, answer)),
                     text("\"%1: %2\"").arg(question.label, title));
    }
    return said;
}

} // namespace

std::vector<IntakeQuestion> intakeQuestions()
{
    using Form = IntakeQuestion::Form;
    return {
        {FileKind::BarTable, named("code"), Form::Named, text("Security"), text("e.g. 600519.SH"), {}},
        {FileKind::BarTable,
         named("volume"),
         Form::Choice,
         text("Unit of the volume"),
         {},
         {{named("shares"), text("shares")}, {named("lots"), text("lots: 100 shares, or ten bonds")}}},
        {FileKind::BarTable, named("day"), Form::Named, text("Day"), text("yyyymmdd"), {}},
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
            said = withChoices(said, question);
            // What to write there needs no name before it.
            said.replace(QRegularExpression(
                             QStringLiteral("--%1 ([0-9]{6}\\.[A-Z]{2}|[0-9]{8})\\b").arg(question.name)),
                         QStringLiteral("\\1"));
            said.replace(QRegularExpression(QStringLiteral("--%1\\b").arg(question.name)),
                         text("\"%1\"").arg(question.label));
        }
    }
    if (kind == FileKind::Statement) {
        said.replace(QRegularExpression(QStringLiteral("(import )?--suggest\\b")),
                     text("\"%1\"").arg(text("Columns and words of your broker")));
    }
    return said;
}

QString takenAnswer(const QString &question, const QString &typed)
{
    if (question != QLatin1String("day") && question != QLatin1String("date")) {
        return typed;
    }
    const std::string cell = typed.trimmed().toStdString();
    const auto form = BarStampForm::of(cell);
    const auto stamp = form ? form->read(cell) : std::nullopt;
    return stamp && stamp->date ? stamp->date->text() : typed;
}

QString answerInName(const QString &question, const QString &path)
{
    if (question == QLatin1String("code")) {
        return codeInName(path);
    }
    return question == QLatin1String("day") ? dayInName(path) : QString();
}

} // namespace Terminal
