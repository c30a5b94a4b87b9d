#include "tests/support/TranslationFile.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

QString readText(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// What a translation file holds, but for contexts of the framework.
Translations readTranslations(const QString &path)
{
    Translations read;
    QXmlStreamReader xml(readText(path));
    QString context;
    QString source;
    QSet<QString> seen;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation") && !context.startsWith(QLatin1Char('Q'))) {
            EXPECT_FALSE(seen.contains(context + source))
                << context.toStdString() << ": " << source.toStdString();
            seen.insert(context + source);
            read[source] = xml.readElementText();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return read;
}

Translations markedTexts(const QStringList &sources, const QStringList &aliases)
{
    const QTemporaryDir directory;
    const QString found = directory.filePath(QStringLiteral("found.ts"));
    QStringList arguments(QStringLiteral("-silent"));
    for (const QString &alias : aliases) {
        arguments << QStringLiteral("-tr-function-alias") << alias;
    }
    QProcess lupdate;
    lupdate.start(QStringLiteral(LUPDATE), arguments + sources + QStringList({QStringLiteral("-ts"), found}));
    EXPECT_TRUE(lupdate.waitForFinished(60000));
    EXPECT_EQ(lupdate.exitCode(), 0);
    return readTranslations(found);
}

std::vector<std::string> missingIn(const Translations &there, const Translations &wanted)
{
    std::vector<std::string> missing;
    for (const QString &source : wanted.keys()) {
        if (!there.contains(source)) {
            missing.push_back(source.toStdString());
        }
    }
    return missing;
}

QStringList placeholders(const QString &text)
{
    static const QRegularExpression placeholder(QStringLiteral("%[1-9]"));
    QStringList found;
    for (auto match = placeholder.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured());
    }
    found.sort();
    return found;
}
