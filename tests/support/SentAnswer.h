#pragma once

#include <QJsonObject>

/// What the trading module answers to an overlay with rows, in `data`, about one security.
QJsonObject sentAnswer(const char *command, const QJsonValue &data, const char *code = "600536");

/// The same object with this value under this key; an undefined value removes the key.
QJsonObject with(QJsonObject object, const char *key, const QJsonValue &value);
