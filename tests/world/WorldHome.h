#pragma once

#include "terminal/data/DataFolder.h"
#include "trademodule/ledger/Ledger.h"

#include <QString>
#include <QTemporaryDir>

#include <optional>

namespace World {

/// The files of worlds: a ledger for each, with some shares in it, and a terminal's data folder. It goes with
/// the process.
class WorldHome
{
public:
    static WorldHome &instance();

    /// A ledger as new, in the place of the one of the world before.
    QString newLedger();
    /// One of each security, before the first day of a world; not those that a new ledger has.
    static TradeModule::Statement purchases();
    const Terminal::DataFolder &dataFolder() const { return *m_folder; }

private:
    WorldHome();
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    const QTemporaryDir m_directory;
    std::optional<Terminal::DataFolder> m_folder;
};

} // namespace World
