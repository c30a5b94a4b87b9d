#include "terminal/watch/WatchTable.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(WatchTable)
};

QString noFigure()
{
    return QStringLiteral(u"–");
}

QString lastText(const WatchedSecurity &row)
{
    return row.last ? QString::number(row.last->price, 'f', 2) : noFigure();
}

QString changeText(const WatchedSecurity &row)
{
    const auto change = row.change();
    return change ? QStringLiteral("%1%2%")
                        .arg(*change > 0 ? QStringLiteral("+") : QString())
                        .arg(*change, 0, 'f', 2)
                  : noFigure();
}

QColor changeColour(const WatchedSecurity &row, const ChartTheme &theme)
{
    const double change = row.change().value_or(0);
    return change > 0 ? theme.rise : change < 0 ? theme.fall : theme.text;
}

QString dayText(const WatchedSecurity &row)
{
    return row.last ? row.last->day.dashedText() : Texts::tr("No price is known");
}

bool isSame(const WatchedSecurity &one, const WatchedSecurity &other)
{
    return one.security.id() == other.security.id();
}

} // namespace

std::optional<double> WatchedSecurity::change() const
{
    constexpr double percent = 100;
    return last && closeBefore && *closeBefore > 0
               ? std::optional((last->price - *closeBefore) / *closeBefore * percent)
               : std::nullopt;
}

WatchTable::WatchTable()
    : RecordTable({{WatchColumn::Code, [] { return Texts::tr("Code"); }, Qt::AlignLeft,
                    [](const WatchedSecurity &row) { return row.security.code; }},
                   {WatchColumn::Name, [] { return Texts::tr("Name"); }, Qt::AlignLeft,
                    [](const WatchedSecurity &row) { return row.security.name; }},
                   {WatchColumn::Last, [] { return Texts::tr("Last"); }, Qt::AlignRight, lastText, nullptr,
                    false, dayText},
                   {WatchColumn::Change, [] { return Texts::tr("Change"); }, Qt::AlignRight, changeText,
                    changeColour, false, dayText}},
                  isSame)
{
}

} // namespace Terminal
