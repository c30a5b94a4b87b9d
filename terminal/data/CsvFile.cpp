#include "terminal/data/CsvFile.h"

#include <QCoreApplication>
#include <QFile>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("CsvFile", source);
}

QByteArray withoutByteOrderMark(QByteArray line)
{
    return line.startsWith("\xEF\xBB\xBF") ? line.mid(3) : line;
}

QByteArray readLine(QFile &file)
{
    QByteArray line = file.readLine();
    while (line.endsWith('\n') || line.endsWith('\r')) {
        line.chop(1);
    }
    return line;
}

QString wrongHeader(const QByteArray &found, const QByteArray &expected)
{
    return text("the first line is \"%1\", but must be \"%2\"")
        .arg(QString::fromUtf8(found.left(80)), QString::fromUtf8(expected));
}

QString rowError(const QByteArray &line, int fieldCount,
                 const std::function<QString(const QList<QByteArray> &)> &takeRow)
{
    const QList<QByteArray> fields = line.split(',');
    if (fields.size() != fieldCount) {
        return text("%1 fields, but there must be %2").arg(fields.size()).arg(fieldCount);
    }
    return takeRow(fields);
}

} // namespace

QString readCsv(const QString &path, const QByteArray &header,
                const std::function<QString(const QList<QByteArray> &)> &takeRow)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return text("%1: cannot be read: %2").arg(path, file.errorString());
    }
    const auto located = [&path](int line, const QString &what) {
        return QStringLiteral("%1:%2: %3").arg(path, QString::number(line), what);
    };
    const QByteArray found = withoutByteOrderMark(readLine(file));
    if (found != header) {
        return located(1, wrongHeader(found, header));
    }
    const auto fieldCount = static_cast<int>(header.count(',') + 1);
    for (int line = 2; !file.atEnd(); ++line) {
        const QString what = rowError(readLine(file), fieldCount, takeRow);
        if (!what.isEmpty()) {
            return located(line, what);
        }
    }
    return {};
}

} // namespace Terminal
