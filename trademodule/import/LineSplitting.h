#pragma once

#include <QString>
#include <QStringList>

namespace TradeModule {

/// How the cells of a statement's lines are kept apart.
enum class Separator { Tab, Comma, Semicolon, Pipe, Blanks };

/// All of them, those first that stand in other lines by chance the least.
constexpr Separator allSeparators[] = {Separator::Tab, Separator::Comma, Separator::Semicolon,
                                       Separator::Pipe, Separator::Blanks};

/// The cells of a line. Separators inside double quotes belong to their cell.
QStringList splitLine(const QString &line, Separator separator);

} // namespace TradeModule
