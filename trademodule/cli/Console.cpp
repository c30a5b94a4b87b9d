#include "trademodule/cli/Console.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

#include <unistd.h> // isatty(): POSIX, the same on Linux and macOS

namespace TradeModule {

namespace {

void write(const QString &text, FILE *stream)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

int screenWidth(const QString &text)
{
    constexpr ushort FirstWide = 0x1100;
    return static_cast<int>(text.size() + std::count_if(text.begin(), text.end(), [](QChar character) {
                                return character.unicode() >= FirstWide;
                            }));
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
    for (int i = 0; i < cells.size(); ++i) {
        line += cells[i] + QString(widths[i] - screenWidth(cells[i]) + 2, QLatin1Char(' '));
    }
    return line.trimmed() + QLatin1Char('\n');
}

} // namespace

void print(const QString &text)
{
    write(text, stdout);
}

void printError(const QString &reason)
{
    write(QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), reason), stderr);
}

bool isTerminal()
{
    return isatty(fileno(stderr)) != 0;
}

QString tableText(const QStringList &header, const QVector<QStringList> &rows)
{
    const QVector<QStringList> lines = QVector<QStringList>{header} + rows;
    const QVector<int> widths = columnWidths(lines);
    QString text;
    for (const QStringList &line : lines) {
        text += alignedLine(line, widths);
    }
    return text;
}

ProgressBar::~ProgressBar()
{
    if (m_percent >= 0) {
        write(QStringLiteral("\r\x1b[K"), stderr);
    }
}

void ProgressBar::show(int done, int total)
{
    const int percent = total > 0 ? static_cast<int>(qint64(done) * 100 / total) : 100;
    if (!m_isVisible || percent == m_percent) {
        return;
    }
    m_percent = percent;
    constexpr int Width = 40;
    const QString bar =
        QString(Width * percent / 100, QLatin1Char('#')).leftJustified(Width, QLatin1Char('.'));
    write(QStringLiteral("\r%1 [%2] %3 %").arg(m_title, bar).arg(percent, 3), stderr);
}

} // namespace TradeModule
