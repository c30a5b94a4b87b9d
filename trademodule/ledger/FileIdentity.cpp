#include "trademodule/ledger/FileIdentity.h"

#include <QFile>

#include <sys/stat.h>

namespace TradeModule {

FileIdentity FileIdentity::of(const QString &path)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return {static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino)};
}

} // namespace TradeModule
