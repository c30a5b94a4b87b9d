#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

namespace Terminal {

/// Reads the comma-separated file `path`, whose first line must be `header` to the letter.
///
/// `takeRow` gets the fields of every further line, as many as the header has; it returns an empty
/// text, or what is wrong with the row. Reading stops there.
/// Returns an empty text, or a message "path:line: what is wrong".
QString readCsv(const QString &path, const QByteArray &header,
                const std::function<QString(const QList<QByteArray> &)> &takeRow);

} // namespace Terminal
