#include "terminal/data/ActionFile.h"

#include "terminal/data/ActionColumns.h"
#include "terminal/data/BarStamp.h"
#include "terminal/data/TradingHours.h"
#include "terminal/data/Utf8Text.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <utility>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("ActionFile", source);
}

QString toText(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
}

bool isNothing(std::string_view cell)
{
    return cell.empty() || cell == "-" || cell == "--";
}

/// Companies have never given more for a share, nor asked them to buy more; what is higher is for ten shares.
constexpr qint64 mostBonus = 3 * SharesPerShare::stepsPerUnit;
constexpr qint64 mostRights = 1 * SharesPerShare::stepsPerUnit;

class ActionReader
{
public:
    ActionReader(const QString &path, const std::optional<SecurityCode> &security)
        : m_path(path),
          m_security(security)
    {
    }

    Loaded<CorporateActions> read(std::string_view rest);

private:
    QString takeHeader(std::string_view line);
    QString takeRow();
    QString readDay(CorporateAction *action);
    QString readFigures(CorporateAction *action);
    QString readSplit(CorporateAction *action);
    QString readFigure(ActionColumn column, qint64 *steps) const;
    QString checkCode() const;
    QString addInOrder(const CorporateAction &action);
    QString inColumn(ActionColumn column) const;
    std::string_view cell(ActionColumn column) const { return m_cells[m_columns.place(column)]; }

    const QString m_path;
    const std::optional<SecurityCode> m_security;
    ActionColumns m_columns;
    CellSeparator m_separator = CellSeparator::Comma;
    std::optional<BarStampForm> m_dayForm;
    Cells m_cells;
    CorporateActions m_actions;
};

Loaded<CorporateActions> ActionReader::read(std::string_view rest)
{
    for (int line = 1; !rest.empty() || line == 1; ++line) {
        const std::string_view row = rest.empty() ? rest : takeLine(&rest);
        QString problem;
        if (line == 1) {
            problem = takeHeader(row);
        } else if (!withoutBlanks(row).empty()) {
            splitCells(row, m_separator, &m_cells);
            problem = takeRow();
        }
        if (!problem.isEmpty()) {
            return Loaded<CorporateActions>::failure(
                QStringLiteral("%1:%2: %3").arg(m_path, QString::number(line), problem));
        }
    }
    return m_actions;
}

QString ActionReader::takeHeader(std::string_view line)
{
    for (const CellSeparator separator : cellSeparators) {
        splitCells(line, separator, &m_cells);
        if (ActionColumns::isHeader(m_cells)) {
            m_separator = separator;
            return m_columns.take(m_cells);
        }
    }
    return text("the first line is \"%1\", but must name the columns, \"exdate\" or 除权除息日 among them")
        .arg(toText(line).left(80));
}

QString ActionReader::takeRow()
{
    if (m_cells.size() != m_columns.count()) {
        return text("%1 fields, but there must be %2").arg(m_cells.size()).arg(m_columns.count());
    }
    CorporateAction action{Trading::TradingDate::first()};
    for (const auto read : {&ActionReader::readDay, &ActionReader::readFigures, &ActionReader::readSplit}) {
        const QString problem = (this->*read)(&action);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    const QString otherSecurity = checkCode();
    return otherSecurity.isEmpty() ? addInOrder(action) : otherSecurity;
}

QString ActionReader::readDay(CorporateAction *action)
{
    const std::string_view day = cell(ActionColumn::ExDate);
    if (!m_dayForm) {
        m_dayForm = BarStampForm::of(day);
    }
    const auto stamp = m_dayForm ? m_dayForm->read(day) : std::nullopt;
    if (!stamp || !stamp->date) {
        return text("\"%1\" is not a date: eight digits, or year, month and day apart; all in one form")
                   .arg(toText(day).left(40)) +
               inColumn(ActionColumn::ExDate);
    }
    if (isClosedWeekend(*stamp->date)) {
        return text("%1 is no trading day").arg(stamp->date->dashedText()) + inColumn(ActionColumn::ExDate);
    }
    action->exDate = *stamp->date;
    return {};
}

QString ActionReader::readFigure(ActionColumn column, qint64 *steps) const
{
    if (!m_columns.has(column) || isNothing(cell(column))) {
        return {};
    }
    const auto number = decimalSteps(cell(column));
    if (!number || *number < 0 || *number % m_columns.shares(column) != 0) {
        return text("\"%1\" is not a decimal number from 0 on, with eight decimals at most")
                   .arg(toText(cell(column)).left(40)) +
               inColumn(column);
    }
    *steps = *number / m_columns.shares(column);
    return {};
}

QString ActionReader::readFigures(CorporateAction *action)
{
    qint64 dividend = 0;
    qint64 bonus = 0;
    qint64 fromReserves = 0;
    qint64 rights = 0;
    qint64 rightsPrice = 0;
    const std::pair<ActionColumn, qint64 *> figures[] = {{ActionColumn::Dividend, &dividend},
                                                         {ActionColumn::Bonus, &bonus},
                                                         {ActionColumn::FromReserves, &fromReserves},
                                                         {ActionColumn::Rights, &rights},
                                                         {ActionColumn::RightsPrice, &rightsPrice}};
    for (const auto &[column, steps] : figures) {
        const QString problem = readFigure(column, steps);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    action->dividend = YuanPerShare::ofSteps(dividend);
    action->bonus = SharesPerShare::ofSteps(bonus + fromReserves);
    action->rights = SharesPerShare::ofSteps(rights);
    action->rightsPrice = YuanPerShare::ofSteps(rightsPrice);
    if (bonus + fromReserves > mostBonus || rights > mostRights) {
        return text("so many new shares for one: are the figures for ten shares?");
    }
    if (action->rights.isZero() != action->rightsPrice.isZero()) {
        return text("rights need a price, and a price needs rights");
    }
    return {};
}

/// A split is a bonus under another name: one that becomes two receives one.
QString ActionReader::readSplit(CorporateAction *action)
{
    qint64 becomes = 0;
    const QString problem = readFigure(ActionColumn::Split, &becomes);
    if (!problem.isEmpty()) {
        return problem;
    }
    if (becomes > 0 && !action->bonus.isZero()) {
        return text("bonus shares and a split on one day: write what one share becomes as the split alone");
    }
    if (becomes > 0) {
        action->bonus = SharesPerShare::ofSteps(becomes - SharesPerShare::stepsPerUnit);
    }
    const bool isEmpty = action->dividend.isZero() && action->bonus.isZero() && action->rights.isZero();
    return isEmpty ? text("nothing happened on this day") : QString();
}

QString ActionReader::checkCode() const
{
    if (!m_columns.has(ActionColumn::Code)) {
        return {};
    }
    const QString code = toText(cell(ActionColumn::Code));
    const auto named = SecurityCode::of(code);
    if (!named || (m_security && !named->agreesWith(*m_security))) {
        return text("\"%1\" is another security than that of the file, %2")
                   .arg(code.left(40), m_security ? m_security->text() : QString()) +
               inColumn(ActionColumn::Code);
    }
    return {};
}

QString ActionReader::addInOrder(const CorporateAction &action)
{
    const auto place = std::lower_bound(
        m_actions.begin(), m_actions.end(), action,
        [](const CorporateAction &a, const CorporateAction &b) { return a.exDate < b.exDate; });
    if (place != m_actions.end() && place->exDate == action.exDate) {
        return text("%1 is there twice: write all of one day into one line").arg(action.exDate.dashedText());
    }
    m_actions.insert(place, action);
    return {};
}

QString ActionReader::inColumn(ActionColumn column) const
{
    return text(", in column %1").arg(m_columns.header(column));
}

} // namespace

Loaded<CorporateActions> readActions(const QByteArray &bytes, const QString &path,
                                     const std::optional<SecurityCode> &security)
{
    const auto content = utf8Of(bytes);
    if (!content) {
        return Loaded<CorporateActions>::failure(
            text("%1: this is no text in UTF-8, UTF-16 or GB18030; save a workbook as CSV").arg(path));
    }
    return ActionReader(path, security).read(viewOf(*content));
}

Loaded<CorporateActions> readActionFile(const QString &path, const std::optional<SecurityCode> &security)
{
    QFile file(path);
    if (!file.exists()) {
        return CorporateActions();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return Loaded<CorporateActions>::failure(
            text("%1: cannot be read: %2").arg(path, file.errorString()));
    }
    return readActions(file.readAll(), path, security);
}

} // namespace Terminal
