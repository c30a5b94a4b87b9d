// schemas/: what the table of messages says, for programs of others.
#pragma once

#include "trading/MessageTable.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

/// "HolderCostPrice.question", "TradeNotify": what the schema of a message is called.
QString schemaName(const Trading::MessageRow &message);

/// JSON Schema (draft 07) of a value that is there.
QJsonObject schemaOf(Trading::JsonType type, Trading::Form form);

/// Every file of schemas/, by its name. An answer's schema allows the failure in its place.
QMap<QString, QByteArray> messageSchemas();
