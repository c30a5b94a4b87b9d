#include "trademodule/cli/Console.h"

#include "trading/PrintableText.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <numeric>

#include <unistd.h> // isatty(): POSIX, the same on Linux and macOS

namespace TradeModule {

using Trading::printable;

namespace {

void write(const QString &text, FILE *stream)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

QString printableLines(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines) {
        text += printable(line) + QLatin1Char('\n');
    }
    return text;
}

struct Range
{
    ushort first;
    ushort last;
};

/// Characters that take two columns: Hangul, ideographs with their kana and signs, and full-width forms.
constexpr Range wideCharacters[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6},
};

/// A half of a surrogate pair counts one: what is written with a pair is wide.
int widthOf(QChar character)
{
    const ushort code = character.unicode();
    const bool isWide =
        std::any_of(std::begin(wideCharacters), std::end(wideCharacters),
                    [code](Range range) { return code >= range.first && code <= range.last; });
    return isWide ? 2 : 1;
}

} // namespace

void print(const QString &text)
{
    write(text, stdout);
}

void printLines(const QStringList &lines)
{
    print(printableLines(lines));
}

void printError(const QString &reason)
{
    write(QCoreApplication::applicationName() + QLatin1String(": ") +
              printableLines(reason.split(QLatin1Char('\n'))),
          stderr);
}

void printLog(const QString &time, const QString &text)
{
    const QString before =
        time + QLatin1Char(' ') + QCoreApplication::applicationName() + QLatin1String(": ");
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        write(before + printable(line) + QLatin1Char('\n'), stderr);
    }
}

int screenWidth(const QString &text)
{
    return std::accumulate(text.begin(), text.end(), 0,
                           [](int width, QChar character) { return width + widthOf(character); });
}

bool isTerminal()
{
    return isatty(fileno(stderr)) != 0;
}

QVector<int> columnWidths(const QVector<QStringList> &lines)
{
    QVector<int> widths(lines.constFirst().size());
    for (const QStringList &line : lines) {
        for (int i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], screenWidth(line[i]));
        }
    }
    return widths;
}

QString alignedLine(const QStringList &cells, const QVector<int> &widths)
{
    QString line;
    int gap = 0; // blanks before the next cell that is not empty: lines have none at their end
    for (int i = 0; i < cells.size(); ++i) {
        if (!cells[i].isEmpty()) {
            line += QString(gap, QLatin1Char(' ')) + printable(cells[i]);
            gap = 0;
        }
        gap += std::max(widths[i] - screenWidth(cells[i]), 0) + 2;
    }
    return line + QLatin1Char('\n');
}

ProgressBar::~ProgressBar()
{
    if (m_percent >= 0) {
        write(QStringLiteral("\r\x1b[K"), stderr);
    }
}

void ProgressBar::show(qint64 done, qint64 total)
{
    const int percent = total > 0 ? static_cast<int>(done * 100 / total) : 100;
    if (!m_isVisible || percent == m_percent) {
        return;
    }
    m_percent = percent;
    constexpr int width = 40;
    const QString bar =
        QString(width * percent / 100, QLatin1Char('#')).leftJustified(width, QLatin1Char('.'));
    write(QStringLiteral("\r%1 [%2] %3 %").arg(m_title, bar).arg(percent, 3), stderr);
}

} // namespace TradeModule
