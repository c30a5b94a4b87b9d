// Every file of the tree that is made from the table of messages.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// Their contents by their path from the top of the tree. Empty contents: docs/messages.md has no marks
/// there.
QMap<QString, QByteArray> messageFiles(const QString &tree);
