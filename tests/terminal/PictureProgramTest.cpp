// The built program as its user starts it: with a broker and a trading module of its own, without a
// display.
#include "terminal/chart/lines/SeriesLabel.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/session/TradingSession.h"
#include "terminal/ui/MainWindow.h"
#include "tests/terminal/support/Pixels.h"
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QImage>

namespace Terminal {
namespace {

using PictureProgram = Program;

TEST_F(PictureProgram, DrawsBarsWithoutADisplay)
{
    const Outcome outcome = snapshot({QStringLiteral("--code"), QStringLiteral("600519")});
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    EXPECT_EQ(QImage(picture()).size(), QSize(1280, 720));
}

TEST_F(PictureProgram, NeitherReadsNorWritesSettingsForAPicture)
{
    ASSERT_EQ(snapshot({}).exitCode, 0);
    const QImage byDefault(picture());
    const QTemporaryDir home;
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("tradechart")));
    QFile settings(home.filePath(QStringLiteral("tradechart/tradeterminal.conf")));
    const QByteArray text = "[General]\ntheme=light\ncode=600519\n";
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly) && settings.write(text) == text.size());
    settings.close();
    ASSERT_EQ(snapshot({}).exitCode, 0);
    EXPECT_EQ(QImage(picture()), byDefault);
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    EXPECT_EQ(settings.readAll(), text);
    EXPECT_EQ(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(QStringLiteral("tradechart")));
}

#ifdef TRADEMODULE
class PictureProgramBesideTheChecker : public PictureProgram,
                                       public ::testing::WithParamInterface<const char *>
{
};

/// libtradechartobject-check tells what a terminal does against the rules of the border.
TEST_P(PictureProgramBesideTheChecker, BreaksNoRuleOfTheBorder)
{
    importStatement();
    const QStringList overlays = QString::fromLatin1(GetParam()).split(QLatin1Char(' '));
    const Outcome outcome = snapshot(
        withLedger() + QStringList({QStringLiteral("--plugin"), QStringLiteral(CHECKER_FILE),
                                    QStringLiteral("--overlays"), overlays[0], QStringLiteral("--period"),
                                    overlays[1], QStringLiteral("--code"), QStringLiteral("600519")}));
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("tradechartobject-check: no rule broken")))
        << qPrintable(outcome.messages);
}

INSTANTIATE_TEST_SUITE_P(Overlays, PictureProgramBesideTheChecker,
                         ::testing::Values("cost,trades,orders day", "cost,orders minute",
                                           "combined-cost,combined-trades week"));

/// 200 shares for 1000, which a file of actions tells as 0.2 for one.
TEST_F(PictureProgram, AdjustsPricesByWhatAStatementTellsAsByAFile)
{
    const auto writeFile = [this](const char *name, const QByteArray &rows) {
        QFile file(m_folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(rows) == rows.size());
        return file.fileName();
    };
    const QString statement =
        writeFile("statement.csv", "成交日期,业务名称,证券代码,证券名称,成交价格,成交数量,成交金额,发生金额\n"
                                   "20160601,证券买入,000001,平安银行,10.00,1000,10000.00,-10000.00\n"
                                   "20160616,红股入账,000001,平安银行,0.00,200,0.00,0.00\n");
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(QStringLiteral("data/daily")));
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(QStringLiteral("data/actions")));
    for (const char *const name : {"securities.csv", "daily/000001.csv"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TRADECHART_EXAMPLES "/") + QLatin1String(name),
                                m_folder.filePath(QStringLiteral("data/") + QLatin1String(name))));
    }
    const auto adjusted = [this](const QStringList &more) {
        const Outcome outcome = snapshot(
            QStringList({QStringLiteral("--data"), m_folder.filePath(QStringLiteral("data")),
                         QStringLiteral("--period"), QStringLiteral("month"), QStringLiteral("--adjusted")}) +
            more);
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
        return QImage(picture()).copy(0, 50, 1280, 600); // the chart
    };
    const QImage byNothing = adjusted({});
    ASSERT_EQ(run(QStringLiteral(TRADEMODULE),
                  {QStringLiteral("--ledger"), ledger(), QStringLiteral("import"), statement}, m_environment)
                  .exitCode,
              0);
    const QImage byStatement =
        adjusted(withLedger() + QStringList({QStringLiteral("--overlays"), QStringLiteral("trades")}));
    writeFile("data/actions/000001.csv", "exdate,bonus\n20160616,0.2\n");
    EXPECT_NE(byStatement, byNothing);
    EXPECT_EQ(byStatement, adjusted({}));
}
#endif

TEST_F(PictureProgram, DrawsAdjustedPricesOnDemand)
{
    ASSERT_EQ(snapshot({QStringLiteral("--code"), QStringLiteral("600519")}).exitCode, 0);
    const QImage raw(picture());
    ASSERT_EQ(
        snapshot({QStringLiteral("--code"), QStringLiteral("600519"), QStringLiteral("--adjusted")}).exitCode,
        0);
    EXPECT_NE(QImage(picture()), raw) << "the label at least";
}

TEST_F(PictureProgram, TellsThatAWindowNeedsADisplay)
{
    const Outcome outcome = terminal({});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("--snapshot"))) << qPrintable(outcome.messages);
}

#ifndef Q_OS_MACOS // whose time-zone data cannot be hidden from a program
TEST_F(PictureProgram, DrawsNothingByTheClockOfAnotherTimeZone)
{
    const QTemporaryDir noTimeZones;
    m_environment.insert(QStringLiteral("TZDIR"), noTimeZones.path());
    const Outcome outcome = snapshot({});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("Asia/Shanghai"))) << qPrintable(outcome.messages);
    EXPECT_FALSE(QFile::exists(picture()));
}
#endif

TEST_F(PictureProgram, RefusesAWrongOptionValue)
{
    const Outcome outcome = snapshot({QStringLiteral("--period"), QStringLiteral("year")});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("--period"))) << qPrintable(outcome.messages);
}

TEST_F(PictureProgram, NamesDataThatIsNotThere)
{
    const Outcome outcome = snapshot({QStringLiteral("--code"), QStringLiteral("123456")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("123456"))) << qPrintable(outcome.messages);
}

TEST_F(PictureProgram, NamesAnOverlayLibraryThatCannotBeLoaded)
{
    const Outcome outcome =
        terminal({QStringLiteral("--snapshot"), picture(), QStringLiteral("--overlays"),
                  QStringLiteral("cost"), QStringLiteral("--plugin"), QStringLiteral("/nowhere/lib.so")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("/nowhere/lib.so"))) << qPrintable(outcome.messages);
}

TEST_F(PictureProgram, WritesNoPictureWithoutTheOverlaysData)
{
    const Outcome outcome = snapshot({QStringLiteral("--overlays"), QStringLiteral("cost"),
                                      QStringLiteral("--timeout"), QStringLiteral("1")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("HolderCostPrice"))) << qPrintable(outcome.messages);
    EXPECT_FALSE(QFile::exists(picture()));
}

#ifdef TRADEMODULE

/// Rows of the canvas's left part in which the line's colour runs from edge to edge.
std::vector<int> lineRows(const QImage &image, const QRect &canvas, const QColor &colour)
{
    std::vector<int> rows;
    for (int y = canvas.top(); y <= canvas.bottom(); ++y) {
        if (pixelsOf(image.copy(canvas.left() + 10, y, 300, 1), colour) > 250) {
            rows.push_back(y);
        }
    }
    return rows;
}

class PictureProgramInTheme : public Program, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(PictureProgramInTheme, DrawsTheCostThatTheLedgerHas)
{
    importStatement();
    const Outcome outcome =
        snapshot(withLedger() + QStringList({QStringLiteral("--code"), QStringLiteral("600519"),
                                             QStringLiteral("--overlays"), QStringLiteral("cost"),
                                             QStringLiteral("--theme"), QLatin1String(GetParam())}));
    ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);

    TerminalOptions options;
    options.size = QSize(1280, 720);
    TradingSession session(DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(), {}, {});
    MainWindow window(&session, options);
    ASSERT_TRUE(window.load(QStringLiteral("600519"), ChartPeriod::Day));
    window.grab();
    const QRect canvas(window.chart()->canvas()->mapTo(&window, QPoint()), window.chart()->canvas()->size());
    const ThemeKind kind = qstrcmp(GetParam(), "light") == 0 ? ThemeKind::Light : ThemeKind::Dark;
    const std::vector<int> rows = lineRows(QImage(picture()), canvas, makeTheme(kind, RiseColour::Red).line);
    ASSERT_EQ(rows.size(), 1U);
    // 400 shares for 756,023.08: what `positions` of the ledger says.
    EXPECT_NEAR(rows.front(), canvas.top() + window.chart()->chartGeometry().priceToY(756023.08 / 400), 1.5);
}

INSTANTIATE_TEST_SUITE_P(Themes, PictureProgramInTheme, ::testing::Values("dark", "light"));

TEST_F(PictureProgram, DrawsTheCombinedOverlaysBesideTheOthers)
{
    importStatement();
    const Outcome outcome =
        snapshot(withLedger() +
                 QStringList({QStringLiteral("--code"), QStringLiteral("600519"), QStringLiteral("--period"),
                              QStringLiteral("minute"), QStringLiteral("--overlays"),
                              QStringLiteral("cost,trades,combined-cost,combined-trades")}));
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
}

TEST_F(PictureProgram, DrawsTheCostOfTheCombinedOverlayToo)
{
    importStatement();
    const QStringList arguments =
        withLedger() +
        QStringList({QStringLiteral("--code"), QStringLiteral("600519"), QStringLiteral("--overlays")});
    ASSERT_EQ(snapshot(arguments + QStringList(QStringLiteral("cost"))).exitCode, 0);
    const QColor line = makeTheme(ThemeKind::Dark, RiseColour::Red).line;
    const QImage ofTheCostLine(picture());
    const QRect chart = ofTheCostLine.rect().adjusted(0, 90, -200, 0);
    ASSERT_EQ(snapshot(arguments + QStringList(QStringLiteral("combined-cost"))).exitCode, 0);
    EXPECT_EQ(lineRows(QImage(picture()), chart, line), lineRows(ofTheCostLine, chart, line));
    EXPECT_EQ(lineRows(ofTheCostLine, chart, line).size(), 1U);
}

TEST_F(PictureProgram, HidesAmountsInAPicture)
{
    importStatement();
    const QStringList arguments =
        withLedger() + QStringList({QStringLiteral("--code"), QStringLiteral("600519"),
                                    QStringLiteral("--overlays"), QStringLiteral("cost")});
    ASSERT_EQ(snapshot(arguments).exitCode, 0);
    const QColor label = makeTheme(ThemeKind::Dark, RiseColour::Red).line;
    const auto labelPixels = [label](const QImage &image) {
        return pixelsOf(image.copy(image.rect().adjusted(image.width() - 200, 90, 0, 0)), label);
    };
    const int shown = labelPixels(QImage(picture()));
    ASSERT_EQ(snapshot(arguments + QStringList(QStringLiteral("--hide-amounts"))).exitCode, 0);
    const int hidden = labelPixels(QImage(picture()));
    EXPECT_GT(hidden, 500) << "the label is there";
    EXPECT_LT(hidden, shown - 100) << "and shorter by its figures";
}

TEST_F(PictureProgram, DrawsNoLineForNoHolding)
{
    const Outcome outcome =
        snapshot(withLedger() + QStringList({QStringLiteral("--overlays"), QStringLiteral("cost")}));
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    const QImage image(picture());
    EXPECT_TRUE(
        lineRows(image, image.rect().adjusted(0, 90, 0, 0), makeTheme(ThemeKind::Dark, RiseColour::Red).line)
            .empty());
}

TEST_F(PictureProgram, IsNotTakenOfALedgerThatIsNotThere)
{
    const QStringList mistyped{QStringLiteral("--module"),   QStringLiteral(TRADEMODULE),
                               QStringLiteral("--ledger"),   ledger(),
                               QStringLiteral("--overlays"), QStringLiteral("cost"),
                               QStringLiteral("--lang"),     QStringLiteral("en")};

    const Outcome outcome = snapshot(mistyped);

    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("There is no ledger ") + ledger()))
        << qPrintable(outcome.messages);
    EXPECT_FALSE(QFile::exists(ledger()));
    EXPECT_FALSE(QFile::exists(picture()));
}

TEST_F(PictureProgram, WaitsForTheTradesToo)
{
    importStatement();
    const QStringList arguments =
        withLedger() + QStringList({QStringLiteral("--code"), QStringLiteral("600519")});
    ASSERT_EQ(snapshot(arguments).exitCode, 0);
    const QImage bare(picture());
    const Outcome outcome =
        snapshot(arguments + QStringList({QStringLiteral("--overlays"), QStringLiteral("trades")}));
    ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    const QColor both = makeTheme(ThemeKind::Dark, RiseColour::Red).both;
    EXPECT_EQ(pixelsOf(bare, both), 0);
    EXPECT_GT(pixelsOf(QImage(picture()), both), 500);
}

/// Lists ask as soon as there is a bus, when nobody may hear it yet. They wait ten seconds for an answer.
TEST_F(PictureProgram, AsksForListsAgainWhenTheTradingModuleHasCome)
{
    importStatement();
    for (const char *const list : {"--trades on", "--results sale"}) {
        const Outcome outcome = snapshot(withLedger() + QString::fromLatin1(list).split(QLatin1Char(' ')) +
                                         QStringList({QStringLiteral("--code"), QStringLiteral("600519"),
                                                      QStringLiteral("--timeout"), QStringLiteral("8")}));
        EXPECT_EQ(outcome.exitCode, 0) << list << ": " << qPrintable(outcome.messages);
    }
}

#endif

} // namespace
} // namespace Terminal
