#pragma once

#include "terminal/data/Bar.h"

#include <QByteArray>

namespace Terminal {

/// Sixty trading days of a walk, the same each time; volumes are whole lots.
Bars someDays();

/// Two days of 240 minutes of the same walk.
Bars someMinutes();

/// A file of bars in a form of its own: a header, and a row in which these words stand for values of a bar:
///
///     {d} {iso} {slash}           20240102, 2024-01-02, 2024/1/2
///     {hhmm} {hh:mm}              0931, 09:31
///     {o} {h} {l} {c} {p}         prices with two decimals; {p} is the close before
///     {v} {lots} {lots0} {v4}     volume in shares, in lots (with decimals, without), in ten thousands
///     {grouped}                   volume in shares, "1,234,500"
///     {yuan} {thousands} {yuan4}  amount in yuan, thousands, ten thousands
///     {millions} {lessYuan}       amount in millions; a fifth less than the prices say
class FormOfDays
{
public:
    FormOfDays(QByteArray header, QByteArray row) : m_header(std::move(header)), m_row(std::move(row)) {}

    FormOfDays &newestFirst()
    {
        m_isNewestFirst = true;
        return *this;
    }
    QByteArray of(const Bars &bars) const;

private:
    QByteArray row(const Bar &bar, double previousClose) const;

    QByteArray m_header;
    QByteArray m_row;
    bool m_isNewestFirst = false;
};

/// The same days, times, prices and volumes.
void expectSame(const Bars &found, const Bars &expected);

} // namespace Terminal
