// The cases of a check: what they promise to the one who runs them, and to the one who reads of them.
#include "trademodule/check/CheckTable.h"

#include "tests/trademodule/check/support/StandInModule.h"
#include "trademodule/check/Checkup.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace TradeModule {

namespace {

/// The headings of a page, as links name them.
QSet<QString> headingsOf(const QString &page)
{
    QSet<QString> names;
    QFile file(QStringLiteral(TRADECHART_TREE "/") + page);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << page.toStdString();
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith('#')) {
            const QString title = QString::fromUtf8(line.mid(line.indexOf(' ') + 1));
            names.insert(title.toLower().replace(u' ', u'-'));
        }
    }
    return names;
}

TEST(CheckTable, HasFortyCasesAndEachNameOnce)
{
    QSet<QByteArray> names;
    for (const CheckCase &checked : allCases()) {
        EXPECT_FALSE(names.contains(checked.id)) << checked.id;
        names.insert(checked.id);
    }
    EXPECT_GE(readOnlyCases().size(), 40U);
}

TEST(CheckTable, NamesPlacesThatTheGuidesHave)
{
    for (const CheckCase &checked : allCases()) {
        const QStringList place = QString::fromLatin1(checked.guide).split(u'#');
        EXPECT_TRUE(headingsOf(place.value(0)).contains(place.value(1))) << checked.guide;
    }
}

TEST(CheckTable, HasCasesThatOnlyReadWhichAskForNoChange)
{
    const QSet<QString> changing = {QStringLiteral("EntrustCancel"), QStringLiteral("EntrustPlace"),
                                    QStringLiteral("Replace"), QStringLiteral("CostMethod")};
    QSet<QString> asked;
    const auto hear = [&asked](const QByteArray &question) {
        asked.insert(QJsonDocument::fromJson(question).object()[QStringLiteral("cmd")].toString());
        return QVector<Said>();
    };
    StandInModule bus(hear, {});
    CheckSettings settings;
    settings.mark = QStringLiteral("check");
    settings.flood = 1;
    settings.longQuestion = 1;
    Checkup(&bus, settings).run(readOnlyCases());
    EXPECT_FALSE(asked.intersects(changing));
    EXPECT_TRUE(asked.contains(QStringLiteral("HistoryTrade")));
}

TEST(CheckTable, HasNoCaseThatASilentModulePasses)
{
    StandInModule bus([](const QByteArray &) { return QVector<Said>(); }, {});
    CheckSettings settings;
    settings.mark = QStringLiteral("check");
    settings.flood = 1;
    settings.longQuestion = 1;
    settings.orderPrice = Trading::Money::ofCents(100);
    const auto cases = allCases();
    const Checkup::Report report = Checkup(&bus, settings).run(cases);
    for (const CaseResult &result : report.results) {
        EXPECT_FALSE(result.faults.isEmpty() && result.skipped.isEmpty()) << result.checked->id;
    }
}

} // namespace

} // namespace TradeModule
