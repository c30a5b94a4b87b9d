#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/BarHeader.h"
#include "terminal/data/Loaded.h"
#include "terminal/data/SecurityCode.h"
#include "terminal/data/VolumeUnit.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace Terminal {

/// What is known of a bar file besides its content. Where the file says something itself, it must say the
/// same.
struct BarHints
{
    std::optional<SecurityCode> security;
    std::optional<Trading::TradingDate> day; ///< of times without a day
    std::optional<VolumeUnit> volume;        ///< for a file with nothing that tells the unit of its volume
    QHash<QString, Trading::Market> markets; ///< by code, of securities that a file may name without one
};

/// What tells in which unit a volume is.
enum class VolumeEvidence { OwnForm, Header, Amounts, Told };

/// What a bar file holds, whatever its maker calls and orders the columns.
struct BarSheet
{
    Bars bars; ///< volume in shares, units of a fund, or bonds
    bool isOfMinutes = false;
    std::optional<SecurityCode> security;                          ///< as the file names it
    Trading::SecurityKind kind = Trading::SecurityKind::MainShare; ///< also where nothing names the security
    QString name; ///< of the security; empty when the file has none
    VolumeUnit volumeUnit = VolumeUnit::Shares;
    VolumeEvidence volumeEvidence = VolumeEvidence::OwnForm;
    PriceKind prices = PriceKind::Unknown;
    int notTraded = 0;         ///< rows of days without trading, which are no bars
    int afterClose = 0;        ///< minutes after the close, which a chart does not have
    QStringList unusedColumns; ///< as the file names them
};

/// Reads a file of bars of days or of minutes. Its columns are known by the names in its header and by what
/// stands in them, in any order, newest or oldest first: see docs/terminal.md. `path` is for messages.
///
/// Whatever does not fit fails the whole file, by line and column; nothing is guessed.
Loaded<BarSheet> readBarSheet(const QByteArray &bytes, const QString &path, const BarHints &hints);

} // namespace Terminal
