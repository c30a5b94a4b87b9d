#include "tests/trading/MessageFiles.h"

#include "tests/trading/AsyncApi.h"
#include "tests/trading/MessagePage.h"
#include "tests/trading/MessageSchemas.h"

#include <QFile>

QMap<QString, QByteArray> messageFiles(const QString &tree)
{
    const auto pageName = QStringLiteral("docs/messages.md");
    QFile page(tree + QLatin1Char('/') + pageName);
    QMap<QString, QByteArray> files{
        {pageName, page.open(QIODevice::ReadOnly) ? withMessageTables(page.readAll()) : QByteArray()},
        {QStringLiteral("docs/asyncapi.yaml"), asyncApi()}};
    const auto schemas = messageSchemas();
    for (auto schema = schemas.begin(); schema != schemas.end(); ++schema) {
        files[QStringLiteral("schemas/") + schema.key()] = *schema;
    }
    return files;
}
