#include "tests/support/SentAnswer.h"

#include <utility>

QJsonObject sentAnswer(const char *command, const QJsonValue &data, const char *code)
{
    return {{QStringLiteral("cmd"), QLatin1String(command)},
            {QStringLiteral("stkcode"), QLatin1String(code)},
            {QStringLiteral("data"), data}};
}

QJsonObject with(QJsonObject object, const char *key, const QJsonValue &value)
{
    object.insert(QLatin1String(key), value);
    return object;
}
