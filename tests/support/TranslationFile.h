#pragma once

#include <QMap>
#include <QStringList>

#include <string>
#include <vector>

/// Translations by their source texts.
using Translations = QMap<QString, QString>;

QString readText(const QString &path);

/// What a translation file holds, but for contexts of the framework.
Translations readTranslations(const QString &path);

/// The texts that are marked in files or folders of sources, without translations. `aliases` name functions
/// that mark texts besides tr(), as "tr+=name".
Translations markedTexts(const QStringList &sources, const QStringList &aliases);

std::vector<std::string> missingIn(const Translations &there, const Translations &wanted);

/// "%1" and the like, in order.
QStringList placeholders(const QString &text);
