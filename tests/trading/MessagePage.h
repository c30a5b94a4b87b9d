// docs/messages.md: its tables are those of the code.
#pragma once

#include <QByteArray>

/// The page with its tables written anew, between the two marks in it. Empty when it has no such marks.
QByteArray withMessageTables(const QByteArray &page);
