#include "trademodule/cli/JsonReply.h"

#include "trademodule/cli/Console.h"
#include "trademodule/import/ImportProfile.h"
#include "trademodule/import/StatementRefused.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace TradeModule::JsonReply {

namespace {

QJsonObject refusedObject(const QJsonObject &reason)
{
    return {{QStringLiteral("refused"), reason}};
}

QJsonObject jsonOf(const Refusal &refusal)
{
    QJsonObject json{{QStringLiteral("reason"), refusal.reason}, {QStringLiteral("file"), refusal.file}};
    if (!refusal.accounts.isEmpty()) {
        json[QStringLiteral("accounts")] = QJsonArray::fromStringList(refusal.accounts);
    }
    if (!refusal.names.isEmpty()) {
        json[QStringLiteral("profile")] = ImportProfile::suggestion(refusal.names, {});
    }
    return json;
}

} // namespace

void write(const QJsonObject &object)
{
    print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + QLatin1Char('\n'));
}

int run(const std::function<int()> &command)
{
    try {
        return command();
    } catch (const StatementRefused &refused) {
        write(refusedObject(jsonOf(refused.refusal())));
        throw;
    } catch (const Error &error) {
        write(refusedObject({{QStringLiteral("reason"), error.reason()}}));
        throw;
    }
}

} // namespace TradeModule::JsonReply
