#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <utility>

namespace TradeModule {

/// Writes to standard output, as it is.
void print(const QString &text);
/// Writes printable lines to standard output.
void printLines(const QStringList &lines);
/// Writes printable lines, with the program's name, to standard error.
void printError(const QString &reason);

/// The same as lines of a log, each after a time.
void printLog(const QString &time, const QString &text);

/// True when standard error is a terminal that a person looks at.
bool isTerminal();

/// How many columns of a terminal a text takes: Chinese characters and their punctuation take two.
int screenWidth(const QString &text);

/// How wide each column of a table is; `lines` have as many cells each.
QVector<int> columnWidths(const QVector<QStringList> &lines);
/// A printable line of a table; a cell that is wider than its column moves the next ones.
QString alignedLine(const QStringList &cells, const QVector<int> &widths);

/// A bar on a terminal that shows how far a long work is; writes nothing elsewhere.
class ProgressBar
{
public:
    explicit ProgressBar(QString title) : m_title(std::move(title)) {}
    ~ProgressBar();
    Q_DISABLE_COPY_MOVE(ProgressBar)

    void show(qint64 done, qint64 total);

private:
    const QString m_title;
    const bool m_isVisible = isTerminal();
    int m_percent = -1;
};

} // namespace TradeModule
