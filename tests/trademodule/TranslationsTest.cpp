// The Chinese texts against the sources that they translate.
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gmock/gmock.h>

namespace TradeModule {

namespace {

/// Translations by their source texts.
using Translations = QMap<QString, QString>;

QString sources()
{
    return QStringLiteral(TRADEMODULE_SOURCES);
}

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
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation") && !context.startsWith(QLatin1Char('Q'))) {
            EXPECT_FALSE(read.contains(source) && !read[source].isEmpty()) << source.toStdString();
            read[source] = xml.readElementText();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return read;
}

Translations chinese()
{
    return readTranslations(sources() + QStringLiteral("/translations/trademodule_zh.ts"));
}

/// The texts that are marked in the sources, without translations.
Translations marked()
{
    const QTemporaryDir directory;
    const QString found = directory.filePath(QStringLiteral("found.ts"));
    QProcess lupdate;
    lupdate.start(QStringLiteral(LUPDATE),
                  {QStringLiteral("-silent"), QStringLiteral("-tr-function-alias"),
                   QStringLiteral("tr+=translated"), sources(), QStringLiteral("-ts"), found});
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

} // namespace

TEST(Translations, AreThereForEveryText)
{
    const Translations texts = marked();

    EXPECT_GT(texts.size(), 100);
    EXPECT_THAT(missingIn(chinese(), texts), testing::IsEmpty());
}

TEST(Translations, AreOfTextsThatAreStillThere)
{
    EXPECT_THAT(missingIn(marked(), chinese()), testing::IsEmpty());
}

TEST(Translations, AreFilledInAndHaveThePlaceholdersOfTheirText)
{
    const Translations translations = chinese();
    for (auto row = translations.begin(); row != translations.end(); ++row) {
        EXPECT_FALSE(row.value().isEmpty()) << row.key().toStdString();
        EXPECT_EQ(placeholders(row.value()), placeholders(row.key())) << row.key().toStdString();
    }
}

/// A literal of several words that is thrown, printed or logged is a text for people.
TEST(Translations, AreAskedForWhereverTheModuleSpeaks)
{
    static const QRegularExpression untranslated(QStringLiteral(
        R"re((throw \w+|warn|print\w*|refuse\w*|arguments)[({][^;"]*QStringLiteral\(\s*"[^"]*[a-z]{2,} [^;]*;)re"
        R"re(|qWarning\(\s*"[^"]*[a-z]{2,} [^;]*;)re"));
    for (QDirIterator files(sources(), {QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        const QString path = files.next();
        const auto match = untranslated.match(readText(path));
        EXPECT_FALSE(match.hasMatch()) << path.toStdString() << ": " << match.captured().toStdString();
    }
}

} // namespace TradeModule
