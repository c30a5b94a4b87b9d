#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace LocalCommunication {

/// The lines of the group [bus] of an INI file. A value is what stands after the '=', without the blanks
/// around it and without double quotes around all of it; no character in it means anything else. What is not
/// understood is a problem: nothing is left out or altered without a word.
class BusGroup
{
public:
    /// Reads the file and stops at the first problem.
    explicit BusGroup(const QString &path);

    /// Empty, or what is wrong, to be read after the name of the file.
    const QString &problem() const { return m_problem; }

    /// In the order of the file.
    const QStringList &keys() const { return m_keys; }

    /// Empty when the key is not there.
    QString value(const QString &key) const { return m_values.value(key); }

private:
    void takeLine(const QByteArray &bytes);
    void takeKey(const QString &key, const QString &text);

    int m_lineNumber = 0;
    bool m_isInside = false; // after the line [bus]
    QStringList m_keys;
    QHash<QString, QString> m_values;
    QString m_problem;
};

} // namespace LocalCommunication
